#include "workbench/app/files/ExportBar.h"

#include "workbench/app/session/Say.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

namespace workbench
{

ExportBar::ExportBar(std::shared_ptr<MltSession> session, QWidget* parent)
    : QFrame(parent)
    , text_(new QLabel)
    , progress_(new QProgressBar)
    , self_(std::make_shared<ExportBar*>(this))
    , exporter_(std::move(session))
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(10, 4, 8, 4);
    auto* cancelButton = new QPushButton(QStringLiteral("Cancel"));
    cancelButton->setAccessibleName(QStringLiteral("Cancel the export"));
    QObject::connect(cancelButton, &QPushButton::clicked, this, [this] { cancel(); });
    progress_->setAccessibleName(QStringLiteral("Progress of the export"));
    row->addWidget(text_);
    row->addWidget(progress_, 1);
    row->addWidget(cancelButton);
    hide();
}

ExportBar::~ExportBar()
{
    *self_ = nullptr;
}

bool ExportBar::start(Projection projection, const ExportSettings& settings)
{
    // Called on the exporter's thread; what they post runs on this one.
    const auto post = [self = self_](auto act) {
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [self, act = std::move(act)] {
                if (*self)
                    act(**self);
            },
            Qt::QueuedConnection);
    };
    ExportCallbacks callbacks;
    callbacks.progress = [post](int done, int total) {
        post([done, total](ExportBar& bar) {
            bar.progress_->setMaximum(total);
            bar.progress_->setValue(done);
        });
    };
    callbacks.finished = [post](const ExportResult& result) {
        post([result](ExportBar& bar) { bar.finished(result); });
    };
    if (!exporter_.start(std::move(projection), settings, std::move(callbacks)))
        return false;
    path_ = settings.path;
    text_->setText(QStringLiteral("Exporting %1").arg(QString::fromStdString(quotedFile(path_))));
    progress_->setRange(0, 0);
    show();
    return true;
}

void ExportBar::cancel()
{
    exporter_.cancel();
}

void ExportBar::finished(const ExportResult& result)
{
    hide();
    using Severity = oribund::MessageSink::Severity;
    if (result.outcome == ExportResult::Outcome::Done)
        say("Exported to " + path_ + ".", Severity::Information);
    else if (result.outcome == ExportResult::Outcome::Failed)
        say("The export failed. " + result.message, Severity::Error);
}

} // namespace workbench
