#include "oribund/host/toolkit/widgets/Checkbox.h"

#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/services/TextTable.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/GlobChange.h"

#include <algorithm>
#include <array>

namespace oribund
{

namespace
{

int markSide()
{
    return UifStd::getControlHeight() * 7 / 10;
}

} // namespace

Checkbox::Checkbox(const InitArgs& args)
    : ClickControl(args)
    , text_(displayText(args.text))
    , message_(args.message)
    , checked_(args.checked)
{
    applyNaturalSize(args, {calcWidth(text_, font()), UifStd::getRowHeight()});
}

int Checkbox::calcWidth(const WString& text)
{
    return calcWidth(text, UifStd::getDefaultFont());
}

int Checkbox::calcWidth(const WString& text, const Glib::FontDesc& font)
{
    return UifStd::getControlHeight() + (text.empty() ? 0 : UifStd::getWidgetGap() + UifStd::measure(text, font));
}

void Checkbox::setChecked(bool checked, eRedrawFlag redrawFlag)
{
    if (checked == checked_)
        return;
    checked_ = checked;
    changed(GlobChange::kState | GlobChange::kContents, redrawFlag);
}

void Checkbox::setText(const UIString& text, eRedrawFlag redrawFlag)
{
    const WString shown = displayText(text);
    if (shown == text_)
        return;
    text_ = shown;
    changed(GlobChange::kState | GlobChange::kContents, redrawFlag);
}

void Checkbox::userToggle()
{
    if (!canInteract())
        return;
    const RedrawHold hold;
    setChecked(!checked_);
    handleToggle();
}

void Checkbox::handleToggle()
{
    events_.notify({CheckboxEvent::Kind::Toggled, this, checked_, 0});
}

void Checkbox::userModifiedClick(unsigned modifiers)
{
    if (!tellsModifiers_)
        userToggle();
    else if (canInteract())
        events_.notify({CheckboxEvent::Kind::ModifiedClick, this, !checked_, modifiers});
}

bool Checkbox::isClickKey(Key key) const
{
    return key == Key::Space;
}

UIString Checkbox::accessibleName() const
{
    const UIString own = ClickControl::accessibleName();
    return own.empty() ? UIString(text_) : own;
}

void Checkbox::describe(AccessibleDescription& description) const
{
    description.role = AccessibleRole::CheckBox;
    description.action = AccessibleAction::Toggle;
    description.checkable = true;
    description.checked = checked_;
}

int Checkbox::textOffset()
{
    return 1 + markSide() + UifStd::getWidgetGap();
}

Kt::Box<int> Checkbox::markBox() const
{
    const int side = std::min(markSide(), getHeight());
    return Kt::Box<int>::fromSize({1, (getHeight() - side) / 2}, {side, side});
}

void Checkbox::draw(CanvasRenderer& renderer)
{
    const Palette& palette = getPalette();
    const Kt::Box<int> mark = markBox();
    drawBox(renderer, mark, checked_ && canInteract() ? palette.accent() : palette.field());
    if (checked_) {
        const double side = mark.width();
        const auto at = [&](double x, double y) { return XY<double>{mark.left + x * side, mark.top + y * side}; };
        const std::array<XY<double>, 3> tick = {at(0.22, 0.52), at(0.42, 0.72), at(0.78, 0.28)};
        renderer.polyline(tick, ink(palette.accentText()), side / 8.0);
    }
    Kt::Box<double> rest = CanvasRenderer::toDouble(localBox());
    rest.left = textOffset();
    if (!text_.empty())
        renderer.text(rest, text_, font(), ink(palette.windowText()));
}

} // namespace oribund
