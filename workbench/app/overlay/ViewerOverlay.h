#pragma once

#include "oribund/host/edit/EditModification.h"
#include "oribund/host/notify/MethodCallback.h"
#include "workbench/app/overlay/FrameStatistics.h"
#include "workbench/app/session/Workspace.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <set>
#include <vector>

namespace oribund
{
class Glob;
}

namespace oribund::qt
{
class PanelSurface;
}

namespace workbench
{

class EffectsPanelPane;
class OverlayPanel;
class PictureHandles;
class ViewerPicker;
class ViewerWidget;

/**
 * What the viewer's picture offers to the effects: their handles, the eye-dropper, and how colours are distributed.
 *
 * The handles are those of the effect whose panel has the keyboard or was clicked last or,
 * until one was, of the last one on the segment that has any. While the edit is played there are none.
 */
class ViewerOverlay final : public QObject
{
public:
    /** All of them outlive it, the widgets but for their end. */
    ViewerOverlay(Workspace& workspace, ViewerWidget& viewer, EffectsPanelPane& effects);
    ~ViewerOverlay() override;

    bool isShown() const { return shown_; }

    /** Whether handles are to be seen at all: the user's choice, which is remembered. */
    void setShown(bool shown);

    PictureHandles& handles();

    OverlayPanel& panel() { return *panel_; }

    oribund::qt::PanelSurface& surface() { return *surface_; }

    /** The effect whose handles are shown, should it have any; kNoObject for none. */
    ObjectId effect() const { return effect_; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using Effects = std::vector<oribund::Kt::Ptr<ModelEffect>>;

    int handleReplaced(const EditReplaced&);
    int handleSelection(const oribund::ValServerEvent<ObjectId>& event);
    int handleTime(const oribund::ValServerEvent<double>& event);
    int handlePlaying(const oribund::ValServerEvent<bool>& event);
    int handleModification(const oribund::EditModification& modification);

    void chooseSoon();
    void choose();
    ObjectId chosenAmong(const Effects& effects);
    void followPanels();
    void fit();
    void showOrHide();

    Workspace& workspace_;
    ViewerWidget& viewer_;
    EffectsPanelPane& effects_;
    oribund::qt::PanelSurface* surface_;
    OverlayPanel* panel_;
    std::unique_ptr<ViewerPicker> picker_;
    FrameStatistics statistics_;
    bool shown_;
    ObjectId wanted_ = kNoObject; ///< by the user
    ObjectId effect_ = kNoObject;
    std::set<ObjectId> known_; ///< the effects that were there to choose from
    ObjectId knownOf_ = kNoObject;
    QTimer chooseTimer_;
    oribund::MethodCallback<ViewerOverlay, EditReplaced> replaced_;
    oribund::MethodCallback<ViewerOverlay, oribund::ValServerEvent<ObjectId>> selection_;
    oribund::MethodCallback<ViewerOverlay, oribund::ValServerEvent<double>> time_;
    oribund::MethodCallback<ViewerOverlay, oribund::ValServerEvent<bool>> playing_;
    oribund::MethodCallback<ViewerOverlay, oribund::EditModification> edit_;
};

} // namespace workbench
