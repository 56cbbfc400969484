#pragma once

#include "oribund/host/notify/MethodCallback.h"
#include "workbench/app/session/Workspace.h"

#include <QPointer>
#include <QWidget>

namespace oribund
{
struct Cue;
}

namespace oribund::qt
{
class PanelSurface;
} // namespace oribund::qt

namespace workbench
{

class CueCommands;
class CueNameField;
class TimeBar;

/** Below the picture: the time bar of the whole edit, over which a cue can be given its name. */
class TimeBarPane final : public QWidget
{
public:
    /** Both outlive the pane. */
    TimeBarPane(Workspace& workspace, CueCommands& cues, QWidget* parent = nullptr);
    ~TimeBarPane() override;

    TimeBar& bar() { return *bar_; }

    /** Opens the menu of the cues for a time of the edit, at a point of the screen. */
    void openCueMenu(double editTime, const QPoint& at);

    /** Opens a field for the name of a cue of the edit, at the cue. */
    void askForName(const oribund::Cue& cue);

    /** The field that is open; null for none. */
    CueNameField* nameField() const;

private:
    int handleReplaced(const EditReplaced&);

    CueCommands& cues_;
    oribund::qt::PanelSurface* surface_;
    TimeBar* bar_;
    QPointer<CueNameField> field_;
    oribund::MethodCallback<TimeBarPane, EditReplaced> replacedCallback_;
};

} // namespace workbench
