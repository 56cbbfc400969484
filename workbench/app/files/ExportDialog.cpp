#include "workbench/app/files/ExportDialog.h"

#include "workbench/app/session/Say.h"
#include "workbench/app/timeline/TimeCode.h"
#include "workbench/store/files/FileIdentity.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>
#include <optional>

namespace workbench
{

namespace
{
std::optional<int> frameIn(const QLineEdit& entry, const FormatData& format)
{
    return frameOfTimeCode(entry.text().trimmed().toStdString(), format);
}
} // namespace

ExportDialog::ExportDialog(const Suggestion& suggestion, const std::vector<ExportPreset>& presets, QWidget* parent)
    : QDialog(parent)
    , suggestion_(suggestion)
    , presets_(presets)
    , path_(new QLineEdit)
    , preset_(new QComboBox)
    , from_(new QLineEdit(QString::fromStdString(timeCodeOf(0, suggestion.format))))
    , to_(new QLineEdit(QString::fromStdString(timeCodeOf(suggestion.frames, suggestion.format))))
    , fault_(new QLabel)
{
    setWindowTitle(QStringLiteral("Export"));
    for (const ExportPreset& preset : presets_)
        preset_->addItem(QStringLiteral("%1 (.%2)")
                             .arg(QString::fromStdString(preset.label), QString::fromStdString(preset.extension)));
    path_->setText(QString::fromStdString(proposal()));
    build();
    presetChosen();
    for (QLineEdit* entry : {path_, from_, to_})
        QObject::connect(entry, &QLineEdit::textChanged, this, [this] { check(); });
    QObject::connect(preset_, &QComboBox::currentIndexChanged, this, [this] { presetChosen(); });
    check();
    takeName();
}

void ExportDialog::takeName()
{
    // Typing replaces the name, and leaves the folder and the extension.
    const QFileInfo file(path_->text());
    path_->setFocus();
    path_->setSelection(static_cast<int>(path_->text().size() - file.fileName().size()),
                        static_cast<int>(file.completeBaseName().size()));
}

/** Without extension. With none of them is it the name of a file in use: who only presses Enter loses nothing. */
std::string ExportDialog::proposal() const
{
    const std::string base = (suggestion_.folder + QLatin1Char('/') + suggestion_.name).toStdString();
    const auto isFree = [this](const std::string& name) {
        return std::none_of(presets_.begin(), presets_.end(), [&](const ExportPreset& preset) {
            const std::string path = name + "." + preset.extension;
            return std::any_of(suggestion_.used.begin(), suggestion_.used.end(),
                               [&](const std::string& file) { return isSameFile(path, file); });
        });
    };
    std::string name = base;
    for (int n = 2; !isFree(name); ++n)
        name = base + "-" + std::to_string(n);
    return name;
}

std::string ExportDialog::path() const
{
    return QDir(suggestion_.folder).absoluteFilePath(path_->text().trimmed()).toStdString();
}

void ExportDialog::build()
{
    auto* form = new QFormLayout(this);
    form->setContentsMargins(16, 16, 16, 12);
    form->setVerticalSpacing(10);
    auto* browseButton = new QPushButton(QStringLiteral("Browse\u2026"));
    browseButton->setAutoDefault(false);
    QObject::connect(browseButton, &QPushButton::clicked, this, [this] { browse(); });
    auto* file = new QHBoxLayout;
    file->addWidget(path_, 1);
    file->addWidget(browseButton);
    path_->setMinimumWidth(380);
    form->addRow(QStringLiteral("&Format"), preset_);
    form->addRow(QStringLiteral("F&ile"), file);
    // The label of a layout has no buddy of its own.
    static_cast<QLabel*>(form->labelForField(file))->setBuddy(path_);
    path_->setAccessibleName(QStringLiteral("File"));
    form->addRow(QStringLiteral("F&rom"), from_);
    form->addRow(QStringLiteral("&To"), to_);
    fault_->setStyleSheet(QStringLiteral("color: #f0c674;"));
    fault_->setTextFormat(Qt::PlainText);
    fault_->setWordWrap(true);
    form->addRow(QString(), fault_);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    export_ = buttons->addButton(QStringLiteral("Export"), QDialogButtonBox::AcceptRole);
    export_->setDefault(true);
    QObject::connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    form->addRow(buttons);
}

void ExportDialog::browse()
{
    // Whether a file may be replaced is asked when the export is to begin.
    const QString chosen =
        QFileDialog::getSaveFileName(this, QStringLiteral("Export to"), QString::fromStdString(path()), QString(),
                                     nullptr, QFileDialog::DontConfirmOverwrite);
    if (!chosen.isEmpty())
        path_->setText(chosen);
}

void ExportDialog::presetChosen()
{
    if (preset_->currentIndex() < 0)
        return;
    const ExportPreset& preset = presets_[static_cast<std::size_t>(preset_->currentIndex())];
    const QFileInfo file(path_->text());
    QString base = path_->text();
    if (findExportPreset(presets_, base.toStdString()))
        base.chop(file.suffix().size() + 1);
    path_->setText(base + QLatin1Char('.') + QString::fromStdString(preset.extension));
}

void ExportDialog::check()
{
    const auto from = frameIn(*from_, suggestion_.format);
    const auto to = frameIn(*to_, suggestion_.format);
    const std::string file = path();
    QString fault;
    if (!findExportPreset(presets_, file))
        fault = QStringLiteral("The file's extension is none of a format above.");
    else if (const std::string found = ExportTarget::findFault(file, suggestion_.used); !found.empty())
        fault = QString::fromStdString(found);
    else if (!from || !to)
        fault = QStringLiteral("A time is written as hours:minutes:seconds:frames.");
    else if (*from >= *to || *from >= suggestion_.frames)
        fault = QStringLiteral("There is nothing between these times.");
    export_->setEnabled(fault.isEmpty());
    if (fault.isEmpty() && QFileInfo::exists(QString::fromStdString(file)))
        fault = QStringLiteral("There is a file of that name.");
    fault_->setText(fault);
}

void ExportDialog::accept()
{
    const QString file = QString::fromStdString(path());
    existing_ = ExportTarget::Existing::Keep;
    if (QFileInfo::exists(file)) {
        QMessageBox box(QMessageBox::Warning, QStringLiteral("Replace a file"),
                        QStringLiteral("Replace %1?").arg(QString::fromStdString(quotedFile(path()))),
                        QMessageBox::Yes | QMessageBox::Cancel, this);
        box.setTextFormat(Qt::PlainText);
        box.setInformativeText(QStringLiteral("What is in the file now is lost when the export is complete."));
        box.button(QMessageBox::Yes)->setText(QStringLiteral("Replace"));
        box.setDefaultButton(QMessageBox::Cancel);
        if (box.exec() != QMessageBox::Yes)
            return;
        existing_ = ExportTarget::Existing::Replace;
    }
    QDialog::accept();
}

ExportRequest ExportDialog::request() const
{
    ExportRequest request;
    request.path = path();
    request.from = frameIn(*from_, suggestion_.format).value_or(0);
    request.to = std::min(frameIn(*to_, suggestion_.format).value_or(suggestion_.frames), suggestion_.frames) - 1;
    request.existing = existing_;
    return request;
}

} // namespace workbench
