#include "workbench/engine/MetadataText.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <utility>

namespace workbench
{

namespace
{

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

std::array<double, 4> colourFromBytes(std::uint32_t red, std::uint32_t green, std::uint32_t blue, std::uint32_t alpha)
{
    const auto unit = [](std::uint32_t byte) { return static_cast<double>(byte & 0xffU) / 255.0; };
    return {unit(red), unit(green), unit(blue), unit(alpha)};
}

std::optional<std::uint32_t> parseHex(std::string_view digits)
{
    std::uint32_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    const bool whole = error == std::errc() && end == digits.data() + digits.size();
    return whole ? std::optional(value) : std::nullopt;
}

std::optional<std::array<double, 4>> namedColour(std::string_view name)
{
    static constexpr std::array<std::pair<std::string_view, std::uint32_t>, 10> names = {{{"black", 0x000000},
                                                                                          {"white", 0xffffff},
                                                                                          {"red", 0xff0000},
                                                                                          {"green", 0x008000},
                                                                                          {"blue", 0x0000ff},
                                                                                          {"yellow", 0xffff00},
                                                                                          {"cyan", 0x00ffff},
                                                                                          {"magenta", 0xff00ff},
                                                                                          {"gray", 0x808080},
                                                                                          {"grey", 0x808080}}};
    for (const auto& [known, rgb] : names)
        if (known == name)
            return colourFromBytes(rgb >> 16, rgb >> 8, rgb, 255);
    return std::nullopt;
}

bool isWord(std::string_view text)
{
    return !text.empty() && text.size() <= 24 && std::none_of(text.begin(), text.end(), isBlank);
}

std::vector<std::string> splitWords(std::string_view text)
{
    std::vector<std::string> words;
    while (!text.empty()) {
        const std::size_t comma = text.find(',');
        std::string_view word = trimmed(text.substr(0, comma));
        for (const std::string_view lead : {"or ", "and "})
            if (word.starts_with(lead))
                word = trimmed(word.substr(lead.size()));
        if (!isWord(word))
            return {};
        words.emplace_back(word);
        text = comma == std::string_view::npos ? std::string_view() : text.substr(comma + 1);
    }
    return words;
}

std::vector<std::string> quotedWords(std::string_view text)
{
    std::vector<std::string> words;
    for (std::size_t open = text.find('\''); open != std::string_view::npos; open = text.find('\'', open)) {
        const std::size_t close = text.find('\'', open + 1);
        if (close == std::string_view::npos)
            break;
        const std::string_view word = text.substr(open + 1, close - open - 1);
        if (isWord(word))
            words.emplace_back(word);
        open = close + 1;
    }
    return words;
}

} // namespace

std::string lowerCase(std::string_view text)
{
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return result;
}

std::string inQuotes(std::string_view name)
{
    std::string result;
    result.reserve(name.size() + 2);
    result += '"';
    result += name;
    result += '"';
    return result;
}

std::string unquoted(std::string_view text)
{
    text = trimmed(text);
    for (const char quote : {'\'', '"'})
        if (text.size() >= 2 && text.front() == quote && text.back() == quote)
            text = trimmed(text.substr(1, text.size() - 2));
    return std::string(text);
}

std::string readableName(std::string_view identifier)
{
    identifier = trimmed(identifier);
    if (identifier.starts_with("av."))
        identifier.remove_prefix(3);
    std::string name(identifier);
    std::replace(name.begin(), name.end(), '_', ' ');
    if (!name.empty())
        name.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(name.front())));
    return name;
}

std::optional<std::array<double, 4>> parseColour(std::string_view text)
{
    text = trimmed(text);
    if (text.starts_with("0x") && text.size() == 10) {
        if (const auto value = parseHex(text.substr(2)))
            return colourFromBytes(*value >> 24, *value >> 16, *value >> 8, *value);
    } else if (text.starts_with('#') && (text.size() == 7 || text.size() == 9)) {
        if (const auto value = parseHex(text.substr(1)))
            return colourFromBytes(*value >> 16, *value >> 8, *value, text.size() == 9 ? *value >> 24 : 255);
    }
    return namedColour(lowerCase(text));
}

std::optional<double> parseNumber(std::string_view text)
{
    const std::string bare = unquoted(text);
    const char* begin = bare.c_str() + (bare.starts_with('+') ? 1 : 0);
    const char* const end = bare.c_str() + bare.size();
    double value = 0.0;
    const auto [stop, error] = std::from_chars(begin, end, value);
    if (begin == end || error != std::errc() || stop != end || !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::vector<std::string> choicesInProse(std::string_view description)
{
    const std::size_t open = description.find('[');
    const std::size_t close = description.find(']', open == std::string_view::npos ? 0 : open);
    if (open != std::string_view::npos && close != std::string_view::npos)
        if (std::vector<std::string> words = splitWords(description.substr(open + 1, close - open - 1));
            words.size() > 1)
            return words;
    if (std::vector<std::string> words = quotedWords(description); words.size() > 1)
        return words;
    const std::size_t colon = description.rfind(':');
    if (colon == std::string_view::npos)
        return {};
    std::string_view list = trimmed(description.substr(colon + 1));
    if (list.ends_with('.'))
        list.remove_suffix(1);
    std::vector<std::string> words = splitWords(list);
    return words.size() > 1 ? words : std::vector<std::string>();
}

} // namespace workbench
