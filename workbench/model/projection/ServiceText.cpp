#include "workbench/model/projection/ServiceText.h"

#include "oribund/host/base/Numeric.h"
#include "oribund/host/effects/params/ParamTraits.h"
#include "workbench/model/EffectDescription.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace workbench
{

using oribund::Angle;
using oribund::ColourData;
using oribund::Vector2d;

namespace
{

constexpr std::array<std::string_view, 2> kPointMarks = {"%1", "%2"};

bool hasAlphaLast(const ParamDescription& description)
{
    return description.format == "rgba";
}

// Writing

std::string textFor(const ParamDescription& description, double value)
{
    return serviceNumber(description, value);
}

std::string textFor(const ParamDescription&, bool value)
{
    return value ? "1" : "0";
}

std::string textFor(const ParamDescription& description, const Angle& value)
{
    return serviceNumber(description, value.degrees);
}

std::string textFor(const ParamDescription& description, const ColourData& value)
{
    static const char digits[] = "0123456789abcdef";
    const bool alphaLast = hasAlphaLast(description);
    std::string text = alphaLast ? "0x" : "#";
    const auto order = alphaLast ? std::array<std::size_t, 4>{0, 1, 2, 3} : std::array<std::size_t, 4>{3, 0, 1, 2};
    for (const std::size_t i : order) {
        const auto byte = static_cast<unsigned>(std::lround(std::clamp(value[i], 0.0, 1.0) * 255.0));
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

std::string textFor(const ParamDescription& description, const Vector2d& value)
{
    std::string text = description.format;
    for (std::size_t i = 0; i < kPointMarks.size(); ++i)
        if (const auto at = text.find(kPointMarks[i]); at != std::string::npos)
            text.replace(at, kPointMarks[i].size(), serviceNumber(description, value[i]));
    return text;
}

template <class P>
std::string textFor(const ParamDescription& description, const P& value) requires oribund::isChoiceParam<P>
{
    const int selected = value.selectedIndex();
    return selected >= 0 && selected < static_cast<int>(description.items.size())
               ? description.items[static_cast<std::size_t>(selected)].raw
               : std::string();
}

// Reading

/** The two numbers that stand where the format has its marks, if it is made of numbers between blanks. */
std::optional<PlainValue> pointFrom(const ParamDescription& description, std::string_view raw)
{
    const auto marks = splitText(description.format, " ");
    const auto numbers = splitText(raw, " ");
    std::array<double, 2> point{};
    int found = 0;
    for (std::size_t i = 0; i < marks.size() && i < numbers.size(); ++i) {
        const auto mark = std::find(kPointMarks.begin(), kPointMarks.end(), marks[i]);
        if (mark == kPointMarks.end())
            continue;
        const auto number = shownNumber(description, numbers[i]);
        if (!number)
            return std::nullopt;
        point[static_cast<std::size_t>(mark - kPointMarks.begin())] = *number;
        ++found;
    }
    return found == 2 ? std::optional<PlainValue>(point) : std::nullopt;
}

std::optional<std::uint32_t> parseHex(std::string_view digits)
{
    std::uint32_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    const bool whole = error == std::errc() && end == digits.data() + digits.size();
    return whole ? std::optional(value) : std::nullopt;
}

/** From 0xRRGGBBAA. */
std::array<double, 4> colourFromBytes(std::uint32_t rgba)
{
    const auto unit = [rgba](int shift) { return static_cast<double>(rgba >> shift & 0xffU) / 255.0; };
    return {unit(24), unit(16), unit(8), unit(0)};
}

template <class Value>
std::optional<PlainValue> plain(const std::optional<Value>& value)
{
    return value ? std::optional<PlainValue>(*value) : std::nullopt;
}

} // namespace

std::string serviceNumber(double value)
{
    if (value == 0.0)
        return "0"; // and not "-0"
    std::array<char, 32> buffer;
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::general, 12).ptr;
    return std::string(buffer.data(), end);
}

std::string serviceNumber(const ParamDescription& description, double shown)
{
    const double raw = (shown - description.offset) / description.scale;
    return serviceNumber(description.integer ? std::round(raw) : raw);
}

std::optional<double> shownNumber(const ParamDescription& description, std::string_view raw)
{
    const auto number = numberFromService(raw);
    const double shown = number ? *number * description.scale + description.offset : NAN;
    return std::isfinite(shown) ? std::optional(shown) : std::nullopt;
}

std::optional<double> numberFromService(std::string_view raw)
{
    const std::size_t comma = raw.find(',');
    if (comma == std::string_view::npos)
        return oribund::parseDouble(raw);
    std::string pointed(raw);
    pointed[comma] = '.';
    return oribund::parseDouble(std::string_view(pointed));
}

std::optional<std::array<double, 4>> parseServiceColour(std::string_view text)
{
    if (text.starts_with("0x") && text.size() == 10) {
        if (const auto rgba = parseHex(text.substr(2)))
            return colourFromBytes(*rgba);
    } else if (text.starts_with('#') && (text.size() == 7 || text.size() == 9)) {
        if (const auto argb = parseHex(text.substr(1)))
            return colourFromBytes(*argb << 8 | (text.size() == 9 ? *argb >> 24 : 0xffU));
    }
    return std::nullopt;
}

std::string serviceText(const ParamDescription& description, const oribund::ParamValue& value)
{
    return std::visit([&description](const auto& typed) { return textFor(description, typed); }, value);
}

std::optional<PlainValue> plainFromService(const ParamDescription& description, const std::string& raw)
{
    switch (description.kind) {
    case ParamKind::Double:
    case ParamKind::Angle:
        return plain(shownNumber(description, raw));
    case ParamKind::Bool:
        if (const auto number = numberFromService(raw))
            return *number != 0.0;
        return std::nullopt;
    case ParamKind::Colour:
        return plain(parseServiceColour(raw));
    case ParamKind::Point:
        return pointFrom(description, raw);
    case ParamKind::IntList:
    case ParamKind::TextList: {
        const bool known = std::any_of(description.items.begin(), description.items.end(),
                                       [&raw](const ListItem& item) { return item.raw == raw; });
        return known ? std::optional<PlainValue>(raw) : std::nullopt;
    }
    case ParamKind::Range:
        return std::nullopt; // its numbers are properties of their own
    case ParamKind::VideoInput:
        return raw;
    }
    return std::nullopt;
}

std::vector<std::string_view> splitText(std::string_view text, std::string_view separators)
{
    std::vector<std::string_view> parts;
    while (true) {
        const std::size_t start = text.find_first_not_of(separators);
        if (start == std::string_view::npos)
            return parts;
        const std::size_t end = std::min(text.find_first_of(separators, start), text.size());
        parts.push_back(text.substr(start, end - start));
        text.remove_prefix(end);
    }
}

} // namespace workbench
