#include "oribund/host/toolkit/core/GlobLook.h"

#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/core/GlobChange.h"

#include <utility>

namespace oribund
{

GlobLook::GlobLook(const Palette& palette)
    : palette_(palette)
{
}

void GlobLook::applyPalette(const Palette& palette, eRedrawFlag redrawFlag)
{
    if (palette == palette_)
        return;
    palette_ = palette;
    changed(GlobChange::kPalette | GlobChange::kContents, redrawFlag);
}

Glib::FontDesc GlobLook::font() const
{
    Glib::FontDesc complete = font_;
    if (complete.size <= 0)
        complete.size = UifStd::getDefaultFontSize();
    return complete;
}

void GlobLook::setFont(const Glib::FontDesc& font)
{
    if (font == font_)
        return;
    font_ = font;
    changed(GlobChange::kFont | GlobChange::kContents);
}

void GlobLook::setTooltip(const UIString& tooltip)
{
    if (tooltip == tooltip_)
        return;
    tooltip_ = tooltip;
    changed(GlobChange::kTooltip);
}

void GlobLook::setAccessibleName(const UIString& name)
{
    if (name == accessibleName_)
        return;
    accessibleName_ = name;
    changed(GlobChange::kTooltip);
}

void GlobLook::setCursor(MouseCursor cursor)
{
    if (cursor == cursor_)
        return;
    cursor_ = cursor;
    changed(GlobChange::kCursor);
}

MouseCursor GlobLook::contextCursor(const XY<int>&) const
{
    return cursor_;
}

void GlobLook::changed(unsigned changes, eRedrawFlag redrawFlag)
{
    deferredChanges_ |= changes;
    if (redrawFlag == eRedrawFlag::Yes)
        requestRedraw(std::exchange(deferredChanges_, 0u));
}

} // namespace oribund
