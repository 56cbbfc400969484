#include "workbench/app/files/ExportBar.h"

#include "workbench/app/session/Say.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include <utility>

namespace workbench
{

ExportBar::ExportBar(std::shared_ptr<EngineHost> engine, QWidget* parent)
    : QFrame(parent)
    , text_(new QLabel)
    , progress_(new QProgressBar)
    , self_(std::make_shared<ExportBar*>(this))
    , exporter_(std::move(engine))
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

bool ExportBar::start(const EditModel& edit, const std::filesystem::path& project, const ExportRequest& request)
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
    ExportEvents events;
    events.progress = [post](int done, int total) {
        post([done, total](ExportBar& bar) {
            bar.progress_->setMaximum(total);
            bar.progress_->setValue(done);
        });
    };
    events.finished = [post](const ExportResult& result, const std::filesystem::path& where) {
        post([result, where](ExportBar& bar) { bar.finished(result, where); });
    };
    if (const std::string fault = startExport(exporter_, edit, project, request, std::move(events)); !fault.empty()) {
        say(fault, oribund::MessageSink::Severity::Error);
        return false;
    }
    afterwards_ = nullptr;
    text_->setText(QStringLiteral("Exporting %1").arg(QString::fromStdString(quotedFile(request.path))));
    progress_->setRange(0, 0);
    show();
    return true;
}

void ExportBar::cancel()
{
    afterwards_ = nullptr;
    exporter_.cancel();
}

void ExportBar::setAfterwards(const QString& description, std::function<void()> act)
{
    text_->setText(text_->text() + QStringLiteral(", ") + description);
    afterwards_ = std::move(act);
}

void ExportBar::finished(const ExportResult& result, const std::filesystem::path& where)
{
    hide();
    using Severity = oribund::MessageSink::Severity;
    const auto afterwards = std::exchange(afterwards_, nullptr);
    if (result.outcome == ExportResult::Outcome::Failed)
        say("The export failed. " + result.message, Severity::Error);
    if (result.outcome != ExportResult::Outcome::Done)
        return;
    const std::string note = result.message.empty() ? std::string() : "\n" + result.message;
    say("Exported to " + where.string() + "." + note, Severity::Information);
    if (afterwards)
        afterwards();
}

} // namespace workbench
