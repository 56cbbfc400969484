#include "oribund/cues/LogAttribute.h"

#include "oribund/cues/CueColours.h"
#include "oribund/cues/CueSearch.h"
#include "oribund/host/edit/Cue.h"
#include "oribund/host/services/TextIds.h"

#include <cstdint>
#include <string>

namespace oribund
{

namespace
{

std::wstring_view trimmed(std::wstring_view text)
{
    const std::size_t first = text.find_first_not_of(L' ');
    return first == std::wstring_view::npos ? std::wstring_view()
                                            : text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

std::optional<std::uint32_t> digitOf(wchar_t c)
{
    if (c >= L'0' && c <= L'9')
        return c - L'0';
    const wchar_t letter = foldCase(c);
    return letter >= L'a' && letter <= L'f' ? std::optional<std::uint32_t>(letter - L'a' + 10) : std::nullopt;
}

} // namespace

std::vector<LogAttribute> getLogAttributes()
{
    return {LogAttribute::Timecode, LogAttribute::Name, LogAttribute::Description, LogAttribute::Colour};
}

UIString getLogAttributeName(LogAttribute attribute)
{
    switch (attribute) {
    case LogAttribute::Timecode:
        return UIString(TextIds::kCueTimecode);
    case LogAttribute::Name:
        return UIString(TextIds::kCueName);
    case LogAttribute::Description:
        return UIString(TextIds::kCueDescription);
    case LogAttribute::Colour:
        return UIString(TextIds::kCueColour);
    }
    return {};
}

WString getLogAttributeText(LogAttribute attribute, const Cue& cue, const EditPtr& edit)
{
    switch (attribute) {
    case LogAttribute::Timecode:
        return getCueTimecode(cue.time, edit);
    case LogAttribute::Name:
        return cue.name;
    case LogAttribute::Description:
        return cue.description;
    case LogAttribute::Colour:
        return getColourText(cue.colour);
    }
    return {};
}

bool setLogAttributeText(LogAttribute attribute, Cue& cue, const WString& text, const EditPtr& edit)
{
    switch (attribute) {
    case LogAttribute::Timecode: {
        const std::optional<double> time = parseCueTimecode(WString(trimmed(text.view())), edit);
        cue.time = time.value_or(cue.time);
        return time.has_value();
    }
    case LogAttribute::Name:
        cue.name = text;
        return true;
    case LogAttribute::Description:
        cue.description = text;
        return true;
    case LogAttribute::Colour: {
        const std::optional<Colour> colour = parseColourText(text);
        cue.colour = colour.value_or(cue.colour);
        return colour.has_value();
    }
    }
    return false;
}

WString getColourText(const Colour& colour)
{
    constexpr wchar_t kDigits[] = L"0123456789abcdef";
    std::wstring text = L"#";
    for (int shift = 20; shift >= 0; shift -= 4)
        text += kDigits[colour.toRGB() >> shift & 0xf];
    return WString(text);
}

std::optional<Colour> parseColourText(const WString& text)
{
    std::wstring_view digits = trimmed(text.view());
    for (const CueColour& named : cueColours()) {
        if (compareNoCase(WString(digits), WString(named.name)) == 0)
            return named.colour;
    }
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
