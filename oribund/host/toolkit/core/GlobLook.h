#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/UIString.h"
#include "oribund/host/base/XY.h"
#include "oribund/host/canvas/FontDesc.h"
#include "oribund/host/canvas/Palette.h"
#include "oribund/host/toolkit/core/Drawable.h"
#include "oribund/host/toolkit/core/MouseCursor.h"
#include "oribund/host/toolkit/core/eRedrawFlag.h"

namespace oribund
{

/** How a glob looks and what it is called, wherever it stands; and the changes that the screen has not been told yet.
 */
class ORIBUND_API GlobLook : public Drawable
{
public:
    const Palette& getPalette() const { return palette_; }

    /** With its size filled in. */
    Glib::FontDesc font() const;

    void setFont(const Glib::FontDesc& font);

    void setTooltip(const UIString& tooltip);

    virtual UIString tooltip() const { return tooltip_; }

    /** What a screen reader calls it; without one the widget's own text. */
    void setAccessibleName(const UIString& name);

    virtual UIString accessibleName() const { return accessibleName_; }

    void setCursor(MouseCursor cursor);

    /** The pointer's shape at a point. Virtual for globs that show several; Inherit asks the parent. */
    virtual MouseCursor contextCursor(const XY<int>& local) const;

protected:
    explicit GlobLook(const Palette& palette);

    /** For this glob alone. */
    void applyPalette(const Palette& palette, eRedrawFlag redrawFlag);

    /** Tells screen and skin what has changed (bits of GlobChange); with No it waits for the next change with Yes. */
    void changed(unsigned changes, eRedrawFlag redrawFlag = eRedrawFlag::Yes);

private:
    Palette palette_;
    Glib::FontDesc font_;
    UIString tooltip_;
    UIString accessibleName_;
    MouseCursor cursor_ = MouseCursor::Inherit;
    unsigned deferredChanges_ = 0;
};

} // namespace oribund
