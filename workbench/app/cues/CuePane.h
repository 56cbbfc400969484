#pragma once

#include "oribund/host/notify/MethodCallback.h"
#include "workbench/app/session/Workspace.h"

#include <QWidget>

namespace oribund
{
class CueDescriptionPanel;
}

namespace oribund::qt
{
class PanelSurface;
} // namespace oribund::qt

namespace workbench
{

/** The fields of the cue that was clicked, walked to or made last, for reading and writing. */
class CuePane final : public QWidget
{
public:
    /** The workspace outlives the pane. */
    explicit CuePane(Workspace& workspace, QWidget* parent = nullptr);
    ~CuePane() override;

    oribund::CueDescriptionPanel& panel() { return *panel_; }

    /** Gives the fields the keyboard. */
    void takeKeyboard();

    QSize sizeHint() const override { return {400, 160}; }

private:
    int handleReplaced(const EditReplaced&);
    int handleCue(const oribund::ValServerEvent<oribund::IdStamp>& event);

    Workspace& workspace_;
    oribund::qt::PanelSurface* surface_;
    oribund::CueDescriptionPanel* panel_;
    oribund::MethodCallback<CuePane, EditReplaced> replacedCallback_;
    oribund::MethodCallback<CuePane, oribund::ValServerEvent<oribund::IdStamp>> cueCallback_;
};

} // namespace workbench
