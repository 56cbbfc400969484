#include "oribund/controls/rows/KeyframeButton.h"

#include "oribund/controls/rows/KeyframeButtonAdaptor.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/toolkit/core/GlobChange.h"

namespace oribund
{

namespace
{

Button::InitArgs argsFor(Canvas* canvas)
{
    const auto side = static_cast<unsigned short>(UifStd::getControlHeight());
    Button::InitArgs args(side, side, canvas);
    args.style = Button::Style::Flat;
    static const String kId("keyframe"); // shared
    args.id = kId;
    return args;
}

} // namespace

KeyframeButton::KeyframeButton(Canvas* canvas)
    : ValButton(argsFor(canvas))
{
    static const auto kLooks = std::make_shared<const Looks>(
        Looks{{KeyframeState::kNone, Image::icon("keyframe-off"), eOff, UIString(TextIds::kNotAnimated)},
              {KeyframeState::kElsewhere, Image::icon("keyframe-away"), eOff, UIString(TextIds::kNoKeyframeHere)},
              {KeyframeState::kHere, Image::icon("keyframe-here"), eOn, UIString(TextIds::kKeyframeHere)}});
    shareLooks(kLooks);
}

void KeyframeButton::setParamName(const WString& name)
{
    if (name == paramName_)
        return;
    paramName_ = name;
    changed(GlobChange::kTooltip);
}

UIString KeyframeButton::accessibleName() const
{
    return UIString(TextIds::kKeyframeOf).withPlaceholder(L"NAME", paramName_);
}

} // namespace oribund
