#include "oribund/host/toolkit/widgets/ValButton.h"

#include <algorithm>

namespace oribund
{

ValButton::ValButton(const InitArgs& args)
    : ValControl(args)
    , value_(toUTF8(getText()))
{
}

ValButton::~ValButton() = default;

void ValButton::addLook(const Look& look)
{
    const auto looks = looks_ ? std::make_shared<Looks>(*looks_) : std::make_shared<Looks>();
    std::erase_if(*looks, [&](const Look& other) { return other.value == look.value; });
    looks->push_back(look);
    looks_ = looks;
    if (look.value == value_)
        showLook(look, eRedrawFlag::Yes);
}

void ValButton::shareLooks(const std::shared_ptr<const Looks>& looks)
{
    looks_ = looks;
    if (const Look* look = findLook(value_))
        showLook(*look, eRedrawFlag::Yes);
}

const ValButton::Look* ValButton::findLook(const String& value) const
{
    if (!looks_)
        return nullptr;
    const auto found =
        std::find_if(looks_->begin(), looks_->end(), [&](const Look& look) { return look.value == value; });
    return found == looks_->end() ? nullptr : &*found;
}

void ValButton::showLook(const Look& look, eRedrawFlag flag)
{
    const RedrawHold hold;
    setTooltip(look.tooltip);
    setText(UIString(), flag);
    setIcon(look.icon, flag);
    setState(look.state, flag);
}

void ValButton::showText(const WString& text, eRedrawFlag flag)
{
    const RedrawHold hold;
    // What an earlier look has left.
    if (looks_)
        showLook({}, flag);
    setText(text, flag);
}

void ValButton::setWidgetValue(const String& value, eRedrawFlag flag)
{
    if (value == value_)
        return;
    const Look* const look = findLook(value);
    value_ = look ? look->value : value; // the same text, and shared
    if (look)
        showLook(*look, flag);
    else
        showText(toWide(value), flag);
}

String ValButton::getWidgetValue() const
{
    return value_;
}

void ValButton::handleClick()
{
    const GlobRef<ValButton> self(this);
    requestDataChange(value_, ChangeKind::Single);
    if (self)
        Button::handleClick();
}

} // namespace oribund
