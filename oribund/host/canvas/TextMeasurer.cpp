#include "oribund/host/canvas/TextMeasurer.h"

#include "oribund/host/canvas/UifStd.h"

#include <cmath>

namespace oribund
{

namespace
{

bool isCombining(wchar_t c)
{
    return (c >= 0x300 && c <= 0x36f) || (c >= 0x200b && c <= 0x200f) || (c >= 0xfe00 && c <= 0xfe0f);
}

bool isFullWidth(wchar_t c)
{
    return (c >= 0x1100 && c <= 0x115f) || (c >= 0x2e80 && c <= 0xa4cf) || (c >= 0xac00 && c <= 0xd7a3) ||
           (c >= 0xf900 && c <= 0xfaff) || (c >= 0xff00 && c <= 0xff60);
}

bool isOneOf(wchar_t c, std::wstring_view set)
{
    return set.find(c) != std::wstring_view::npos;
}

/** The advance of a character in parts of the font size. */
double advanceOf(wchar_t c)
{
    if (c < 0x20 || isCombining(c))
        return 0.0;
    if (isFullWidth(c))
        return 1.0;
    if (isOneOf(c, L"ijl|'!.,:;`"))
        return 0.28;
    if (isOneOf(c, L" ftrI()[]{}/\\-\""))
        return 0.36;
    if (isOneOf(c, L"mwMW%@\u2014\u2026"))
        return 0.86;
    if (c >= L'A' && c <= L'Z')
        return 0.67;
    return 0.57; // figures all the same, so that a changing number does not move about
}

int sizeOf(const Glib::FontDesc& font)
{
    return font.size > 0 ? font.size : UifStd::getDefaultFontSize();
}

} // namespace

TextMeasurer::~TextMeasurer() = default;

int TableTextMeasurer::width(std::wstring_view text, const Glib::FontDesc& font) const
{
    double em = 0.0;
    for (const wchar_t c : text)
        em += advanceOf(c);
    constexpr double kBoldFactor = 1.06;
    return static_cast<int>(std::ceil(em * sizeOf(font) * (font.bold ? kBoldFactor : 1.0) - 1e-9));
}

int TableTextMeasurer::lineHeight(const Glib::FontDesc& font) const
{
    return (sizeOf(font) * 5 + 3) / 4;
}

} // namespace oribund
