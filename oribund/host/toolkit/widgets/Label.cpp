#include "oribund/host/toolkit/widgets/Label.h"

#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/services/TextTable.h"
#include "oribund/host/toolkit/core/GlobChange.h"

#include <algorithm>

namespace oribund
{

Label::Label(const InitArgs& args)
    : Glob(args)
    , text_(displayText(args.text))
    , align_(args.align)
    , role_(args.role)
{
    const int width = args.width ? args.width : calcSizeFor(text_, font()).x;
    applySize(width, args.height ? args.height : UifStd::getRowHeight());
}

void Label::setText(const UIString& text, eRedrawFlag redrawFlag)
{
    const WString shown = displayText(text);
    if (shown == text_)
        return;
    text_ = shown;
    changed(GlobChange::kState | GlobChange::kContents | GlobChange::kTooltip, redrawFlag);
}

void Label::setAlignment(TextAlign align)
{
    if (align == align_)
        return;
    align_ = align;
    changed(GlobChange::kState | GlobChange::kContents);
}

void Label::setTextRole(PaletteRole role)
{
    if (role == role_)
        return;
    role_ = role;
    changed(GlobChange::kPalette | GlobChange::kContents);
}

Colour Label::getTextColour() const
{
    return canInteract() ? getPalette().colour(role_) : getPalette().disabledText();
}

XY<int> Label::calcSizeFor(const WString& text, const Glib::FontDesc& font)
{
    return {UifStd::measure(text, font), std::max(UifStd::lineHeight(font), UifStd::getControlHeight())};
}

UIString Label::tooltip() const
{
    const UIString own = Glob::tooltip();
    const bool cut = UifStd::measure(text_, font()) > getWidth();
    return own.empty() && cut ? UIString(text_) : own;
}

UIString Label::accessibleName() const
{
    const UIString own = Glob::accessibleName();
    return own.empty() ? UIString(text_) : own;
}

void Label::describe(AccessibleDescription& description) const
{
    description.role = AccessibleRole::Text;
}

void Label::draw(CanvasRenderer& renderer)
{
    if (!text_.empty())
        renderer.text(CanvasRenderer::toDouble(localBox()), text_, font(), getTextColour(), align_);
}

} // namespace oribund
