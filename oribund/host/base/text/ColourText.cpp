#include "oribund/host/base/text/ColourText.h"

#include <cstdint>
#include <string>

namespace oribund
{

namespace
{

std::optional<std::uint32_t> digitOf(wchar_t c)
{
    if (c >= L'0' && c <= L'9')
        return c - L'0';
    const wchar_t letter = foldCase(c);
    return letter >= L'a' && letter <= L'f' ? std::optional<std::uint32_t>(letter - L'a' + 10) : std::nullopt;
}

} // namespace

WString hexText(const Colour& colour)
{
    constexpr wchar_t kHexDigits[] = L"0123456789abcdef";
    std::wstring text = L"#";
    for (int shift = 20; shift >= 0; shift -= 4)
        text += kHexDigits[colour.toRGB() >> shift & 0xf];
    return WString(text);
}

std::optional<Colour> parseHexColour(std::wstring_view digits)
{
    if (!digits.empty() && digits.front() == L'#')
        digits.remove_prefix(1);
    if (digits.size() != 3 && digits.size() != 6)
        return std::nullopt;
    std::uint32_t rgb = 0;
    for (const wchar_t c : digits) {
        const std::optional<std::uint32_t> digit = digitOf(c);
        if (!digit)
            return std::nullopt;
        rgb = digits.size() == 3 ? rgb << 8 | *digit * 0x11 : rgb << 4 | *digit;
    }
    return Colour::fromRGB(rgb);
}

} // namespace oribund
