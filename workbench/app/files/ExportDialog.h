#pragma once

#include "workbench/engine/ExportPreset.h"
#include "workbench/engine/Exporter.h"
#include "workbench/model/EditData.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace workbench
{

/** Asks where, in which format and which part of the edit is to be exported. */
class ExportDialog final : public QDialog
{
public:
    struct Suggestion {
        QString path; ///< without extension
        FormatData format;
        int frames = 0; ///< length of the edit
    };

    ExportDialog(const Suggestion& suggestion, const std::vector<ExportPreset>& presets, QWidget* parent = nullptr);

    /** What was asked for, once the dialog was accepted. */
    ExportSettings settings() const;

private:
    void build();
    void browse();
    void presetChosen();
    void check();

    Suggestion suggestion_;
    std::vector<ExportPreset> presets_;
    QLineEdit* path_;
    QComboBox* preset_;
    QLineEdit* from_;
    QLineEdit* to_;
    QLabel* fault_;
    QPushButton* export_ = nullptr;
};

} // namespace workbench
