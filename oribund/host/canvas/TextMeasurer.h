#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/XY.h"
#include "oribund/host/canvas/FontDesc.h"

#include <string_view>

namespace oribund
{

/** Tells how large texts are when drawn. Logical pixels; user-interface thread only. */
class ORIBUND_API TextMeasurer
{
public:
    virtual ~TextMeasurer();

    /** The advance width of one line of text, rounded up. */
    virtual int width(std::wstring_view text, const Glib::FontDesc& font) const = 0;

    /** The height of a line, from the highest ascender to the lowest descender. */
    virtual int lineHeight(const Glib::FontDesc& font) const = 0;
};

/**
 * Measures without any font: widths come from a table of letter classes that is close to a common interface font, and
 * are the same on every machine.
 */
class ORIBUND_API TableTextMeasurer final : public TextMeasurer
{
public:
    int width(std::wstring_view text, const Glib::FontDesc& font) const override;
    int lineHeight(const Glib::FontDesc& font) const override;
};

} // namespace oribund
