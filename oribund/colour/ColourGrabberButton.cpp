#include "oribund/colour/ColourGrabberButton.h"

#include "oribund/host/base/Numeric.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/edit/Vob.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/toolkit/core/Event.h"

#include <utility>

namespace oribund
{

namespace
{

Button::InitArgs grabberArgs(const Palette& palette, Canvas* canvas)
{
    const auto side = static_cast<unsigned short>(UifStd::getControlHeight());
    Button::InitArgs args(side, side, canvas);
    args.palette = palette;
    args.icon = Image::icon("eye-dropper");
    return args;
}

ColEyeDropBase::PickMode modeOf(unsigned modifiers)
{
    if (modifiers & Event::kAlt)
        return ColEyeDropBase::PickMode::Remove;
    return modifiers & Event::kShift ? ColEyeDropBase::PickMode::Add : ColEyeDropBase::PickMode::Replace;
}

String textOfRange(const ColourData& range)
{
    String text;
    for (const double component : range.values)
        text = text + " " + formatNumber(component);
    return text;
}

} // namespace

ColourGrabberButton::ColourGrabberButton(const FXViewHandle& handle, const Palette& palette, Canvas* canvas)
    : Button(grabberArgs(palette, canvas))
    , handle_(handle)
{
    setTooltip(UIString(TextIds::kPickColours));
    setAccessibleName(UIString(TextIds::kPickStep));
    setVisible(picker() != nullptr);
}

ColourGrabberButton::~ColourGrabberButton()
{
    iColourPicker* const source = picker();
    if (isPicking() && source)
        source->end(std::exchange(pick_, iColourPicker::kNone));
}

iColourPicker* ColourGrabberButton::picker() const
{
    Vob* const vob = handle_.getVob();
    return vob ? vob->colourPicker() : nullptr;
}

void ColourGrabberButton::handleClick()
{
    iColourPicker* const source = picker();
    if (isPicking() || !source) {
        endPick();
        return;
    }
    pickCallback_.attach(source->picks());
    pick_ = source->begin(handle_);
    setState(isPicking() ? eOn : eOff);
}

void ColourGrabberButton::endPick()
{
    const iColourPicker::Number pick = std::exchange(pick_, iColourPicker::kNone);
    if (pick == iColourPicker::kNone)
        return;
    setState(eOff);
    if (iColourPicker* const source = picker())
        source->end(pick);
}

int ColourGrabberButton::handlePick(const ColourPickEvent& event)
{
    if (!isPicking() || event.pick != pick_)
        return 0;
    if (event.kind == ColourPickEvent::Kind::Ended) {
        pick_ = iColourPicker::kNone;
        setState(eOff);
        return 0;
    }
    if (event.colours.empty() || !canInteract())
        return 0;
    range_ = rangeOf(event.colours);
    mode_ = modeOf(event.modifiers);
    sendMsg(String(kMessage) + textOfRange(range_.hue) + textOfRange(range_.saturation) +
            textOfRange(range_.luminance));
    return 0;
}

void ColourGrabberButton::setActive(bool active, eRedrawFlag redrawFlag)
{
    if (!active)
        endPick();
    Button::setActive(active, redrawFlag);
}

void ColourGrabberButton::setEnabled(bool enabled, eRedrawFlag redrawFlag)
{
    if (!enabled)
        endPick();
    Button::setEnabled(enabled, redrawFlag);
}

} // namespace oribund
