#pragma once

#include "workbench/app/files/ExportRun.h"
#include "workbench/engine/protocol/ExportTypes.h"
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
        QString folder; ///< absolute; what is typed without a folder lies there too
        QString name;   ///< without extension
        FormatData format;
        int frames = 0;                ///< length of the edit
        std::vector<std::string> used; ///< files that must not be written over
    };

    ExportDialog(const Suggestion& suggestion, const std::vector<ExportPreset>& presets, QWidget* parent = nullptr);

    /** What was asked for, once the dialog was accepted. */
    ExportRequest request() const;

    /** Asks before it is accepted when a file is to be replaced. */
    void accept() override;

private:
    std::string proposal() const;
    std::string path() const;
    void build();
    void takeName();
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
    ExportTarget::Existing existing_ = ExportTarget::Existing::Keep;
};

} // namespace workbench
