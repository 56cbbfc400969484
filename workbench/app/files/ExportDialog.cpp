#include "workbench/app/files/ExportDialog.h"

#include "workbench/app/timeline/TimeCode.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
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
    path_->setText(suggestion_.path);
    build();
    presetChosen();
    for (QLineEdit* entry : {path_, from_, to_})
        QObject::connect(entry, &QLineEdit::textChanged, this, [this] { check(); });
    QObject::connect(preset_, &QComboBox::currentIndexChanged, this, [this] { presetChosen(); });
    check();
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
    fault_->setEnabled(false);
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
    const QString chosen = QFileDialog::getSaveFileName(this, QStringLiteral("Export to"), path_->text());
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
    QString fault;
    bool usable = false;
    if (!findExportPreset(presets_, path_->text().toStdString()))
        fault = QStringLiteral("The file's extension is none of a format above.");
    else if (!from || !to)
        fault = QStringLiteral("A time is written as hours:minutes:seconds:frames.");
    else if (*from >= *to || *from >= suggestion_.frames)
        fault = QStringLiteral("There is nothing between these times.");
    else
        usable = true;
    if (usable && QFileInfo::exists(path_->text()))
        fault = QStringLiteral("The file exists and will be replaced.");
    fault_->setText(fault);
    export_->setEnabled(usable);
}

ExportSettings ExportDialog::settings() const
{
    ExportSettings settings;
    settings.path = path_->text().toStdString();
    settings.from = frameIn(*from_, suggestion_.format).value_or(0);
    settings.to = std::min(frameIn(*to_, suggestion_.format).value_or(suggestion_.frames), suggestion_.frames) - 1;
    return settings;
}

} // namespace workbench
