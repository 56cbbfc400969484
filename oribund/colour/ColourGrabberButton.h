#pragma once

#include "oribund/colour/ColEyeDropBase.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/edit/iColourPicker.h"
#include "oribund/host/edit/monitor/FXViewHandle.h"
#include "oribund/host/notify/MethodCallback.h"
#include "oribund/host/toolkit/widgets/Button.h"

namespace oribund
{

/**
 * The eye-dropper: while it is down the user picks colours from the viewer's picture. For each pick it keeps the soft
 * ranges that hold them, and sends a message that begins with kMessage. A second click, or Escape, ends it. Hidden
 * where the viewer has no picker. User-interface thread only.
 */
class ORIBUND_API ColourGrabberButton : public Button, public ColEyeDropBase
{
public:
    static constexpr char kMessage[] = "colour_eye_dropper HSV ";

    /** Picks from the input of the effect in the view. A square of a control's height. */
    ColourGrabberButton(const FXViewHandle& handle, const Palette& palette, Canvas* canvas);
    ~ColourGrabberButton() override;

    /** Of the last pick. */
    const ColourRange& getRange() const { return range_; }

    /** What is to become of the ranges that are there, as the keys held with the pick say. */
    PickMode getMode() const { return mode_; }

    bool isPicking() const { return pick_ != iColourPicker::kNone; }

    void setActive(bool active, eRedrawFlag redrawFlag = eRedrawFlag::Yes) override;
    void setEnabled(bool enabled, eRedrawFlag redrawFlag = eRedrawFlag::Yes) override;

protected:
    void handleClick() override;

    void handleHidden() override { endPick(); }

private:
    iColourPicker* picker() const;
    void endPick();
    int handlePick(const ColourPickEvent& event);

    FXViewHandle handle_;
    ColourRange range_;
    PickMode mode_ = PickMode::Replace;
    iColourPicker::Number pick_ = iColourPicker::kNone;
    MethodCallback<ColourGrabberButton, ColourPickEvent> pickCallback_{this, &ColourGrabberButton::handlePick};
};

} // namespace oribund
