#include "oribund/host/toolkit/widgets/Button.h"

#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/services/TextTable.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/GlobChange.h"

#include <algorithm>

namespace oribund
{

Button::Button(const InitArgs& args)
    : ClickControl(args)
    , text_(displayText(args.text))
    , icon_(args.icon)
    , message_(args.message)
    , style_(args.style)
    , checkable_(args.checkable)
{
    XY<int> natural = calcSizeFor(text_, font());
    if (!icon_.empty())
        natural.x = text_.empty() ? natural.y : natural.x + natural.y;
    applyNaturalSize(args, natural);
}

void Button::setText(const UIString& text, eRedrawFlag redrawFlag)
{
    const WString shown = displayText(text);
    if (shown == text_)
        return;
    text_ = shown;
    changed(GlobChange::kLook, redrawFlag);
}

void Button::setIcon(const Image& icon, eRedrawFlag redrawFlag)
{
    if (icon == icon_)
        return;
    icon_ = icon;
    changed(GlobChange::kLook, redrawFlag);
}

void Button::setState(int state, eRedrawFlag redrawFlag)
{
    if (state != eOn && state != eMixed)
        state = eOff;
    if (state == state_)
        return;
    state_ = state;
    changed(GlobChange::kLook, redrawFlag);
}

XY<int> Button::calcSizeFor(const WString& text, const Glib::FontDesc& font)
{
    return {UifStd::measure(text, font) + 2 * UifStd::getWidgetGap(),
            std::max(UifStd::lineHeight(font) + 2, UifStd::getControlHeight())};
}

XY<int> Button::calcSizeFor(const WString& text)
{
    return calcSizeFor(text, UifStd::getDefaultFont());
}

void Button::userClick()
{
    if (!canInteract())
        return;
    if (checkable_)
        setState(state_ == eOn ? eOff : eOn);
    handleClick();
}

void Button::handleClick()
{
    const GlobRef<Button> self(this);
    clicks_.notify({this});
    if (self && !message_.empty())
        sendMsg(message_);
}

UIString Button::accessibleName() const
{
    UIString own = ClickControl::accessibleName();
    if (!own.empty())
        return own;
    return text_.empty() ? tooltip() : UIString(text_);
}

void Button::describe(AccessibleDescription& description) const
{
    description.role = AccessibleRole::Button;
    description.action = AccessibleAction::Press;
    // One that shows a state without switching it has that state all the same.
    description.checkable = checkable_ || state_ != eOff;
    description.checked = state_ == eOn;
    description.mixed = state_ == eMixed;
    description.pressed = isPressed();
}

void Button::draw(CanvasRenderer& renderer)
{
    const Palette& palette = getPalette();
    const Kt::Box<int> box = controlBox();
    const bool lit = state_ == eOn;
    const bool hasGround = style_ == Style::Framed || isPressed() || isHot();
    if (hasGround)
        drawBox(renderer, box, lit && style_ == Style::Framed ? palette.accent() : buttonGround(isPressed()));
    else
        drawFocusRing(renderer, box);
    const Colour& flatInk = state_ == eOff ? palette.buttonText() : palette.focus();
    const Colour& framedInk = lit ? palette.accentText() : palette.buttonText();
    drawContents(renderer, ink(style_ == Style::Framed ? framedInk : flatInk));
    if (state_ == eMixed) {
        // Half on: a bar along the lower edge.
        const Kt::Box<double> edges = CanvasRenderer::toDouble(box.inset(2));
        renderer.fillRect({edges.left, edges.bottom - 2, edges.right, edges.bottom}, ink(palette.focus()));
    }
}

void Button::drawContents(CanvasRenderer& renderer, const Colour& colour)
{
    Kt::Box<double> rest = CanvasRenderer::toDouble(controlBox().inset(2));
    if (!icon_.empty()) {
        const double side = std::min(rest.width(), rest.height());
        const double left = text_.empty() ? rest.left + (rest.width() - side) / 2 : rest.left;
        const double top = rest.top + (rest.height() - side) / 2;
        renderer.image(Kt::Box<double>::fromSize({left, top}, {side, side}), icon_, colour);
        rest.left += side + 2;
    }
    if (!text_.empty())
        renderer.text(rest, text_, font(), colour, icon_.empty() ? TextAlign::Centre : TextAlign::Left);
}

} // namespace oribund
