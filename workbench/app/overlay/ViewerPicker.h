#pragma once

#include "oribund/host/base/Box.h"
#include "oribund/host/edit/iColourPicker.h"
#include "oribund/host/edit/monitor/FXViewHandle.h"
#include "oribund/host/notify/MethodCallback.h"
#include "oribund/host/notify/ValServer.h"
#include "workbench/app/overlay/InputPicture.h"
#include "workbench/app/session/Workspace.h"

#include <QPointer>
#include <QShortcut>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>

namespace oribund::qt
{
class PanelSurface;
}

namespace workbench
{

class PickArea;

/**
 * The eye-dropper in the viewer. Colours come from the picture that the effect gets, which is shown for the time of the
 * pick; until it is there, and where it cannot be had, from the picture that the viewer shows.
 */
class ViewerPicker final : public oribund::iColourPicker
{
public:
    /** All of them outlive it. `shown` gives the viewer's picture, null for none. */
    ViewerPicker(Workspace& workspace, oribund::qt::PanelSurface& surface, PickArea& area,
                 std::function<FrameImagePtr()> shown);
    ~ViewerPicker();

    ViewerPicker(const ViewerPicker&) = delete;
    ViewerPicker& operator=(const ViewerPicker&) = delete;

    Number begin(const oribund::FXViewHandle& effect) override;
    void end(Number pick) override;

    oribund::Notifier<oribund::ColourPickEvent>& picks() override { return picks_; }

    /** Whether a pick goes on. */
    bool isPicking() const { return pick_ != kNone; }

    /** Called when a pick has begun, and when it has ended. */
    std::function<void()> changed;

private:
    int handleTime(const oribund::ValServerEvent<double>& event);
    int handleReplaced(const EditReplaced&);

    void ask();
    void show(const FrameImagePtr& input);
    void pick(const oribund::Kt::Box<double>& area, unsigned modifiers);
    void giveKeyboardBack();

    Workspace& workspace_;
    oribund::qt::PanelSurface& surface_;
    PickArea& area_;
    const std::function<FrameImagePtr()> shown_;
    Number pick_ = kNone;
    Number count_ = 0;
    oribund::IdStamp effect_;
    std::unique_ptr<InputPicture> input_;
    FrameImagePtr inputPicture_; ///< null while it is not there
    QPointer<QWidget> keyboardBefore_;
    QShortcut escape_;
    QTimer askTimer_;
    oribund::Notifier<oribund::ColourPickEvent> picks_;
    oribund::MethodCallback<ViewerPicker, oribund::ValServerEvent<double>> time_;
    oribund::MethodCallback<ViewerPicker, EditReplaced> replaced_;
};

} // namespace workbench
