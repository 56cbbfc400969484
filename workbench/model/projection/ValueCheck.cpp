#include "workbench/model/projection/ValueCheck.h"

#include "workbench/model/EffectDescription.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <span>
#include <string>
#include <utility>

namespace workbench
{

namespace
{
// With the signs of an animation: "0=1.5;25~=2e-3;50|=3".
constexpr std::string_view kNumberSigns = "0123456789+-.eE=;|~ ";
constexpr std::string_view kColourSigns = "0123456789abcdefABCDEFx#=;|";

constexpr std::array<std::string_view, 12> kStillExtensions = {".bmp", ".gif", ".jfif", ".jpeg", ".jpg", ".pcx",
                                                               ".pgm", ".png", ".svg",  ".tga",  ".tif", ".tiff"};

// What cannot be opened as a film is tried by its extension: as a project, a page, a list of commands.
constexpr std::array<std::string_view, 23> kProgramExtensions = {
    ".mlt",  ".westley", ".kdenlive", ".melt",          ".inigo", ".graphics", ".htm", ".html",
    ".jfx",  ".jef",     ".json",     ".kdenlivetitle", ".kino",  ".lottie",   ".mpl", ".qml",
    ".rawr", ".story",   ".tgs",      ".txt",           ".xml",   ".svgz",     ".xcf"};

bool consistsOf(std::string_view text, std::string_view signs)
{
    return text.find_first_not_of(signs) == std::string_view::npos;
}

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isWord(std::string_view text)
{
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return isLetter(c) || isDigit(c) || c == '.' || c == '_' || c == '-'; });
}

bool isColour(std::string_view text)
{
    return consistsOf(text, kColourSigns) || std::all_of(text.begin(), text.end(), isLetter);
}

/** From the root, and without a way back up: what a path says is then where it leads, but for links. */
bool isPlainPath(std::string_view text)
{
    const bool hasControl =
        std::any_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; });
    if (!text.starts_with('/') || hasControl)
        return false;
    const std::filesystem::path path(text);
    return std::none_of(path.begin(), path.end(), [](const auto& part) { return part == ".."; });
}

bool hasExtension(std::string_view text, std::span<const std::string_view> extensions)
{
    std::string extension = std::filesystem::path(text).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return std::find(extensions.begin(), extensions.end(), extension) != extensions.end();
}

/** Readers of pictures put a number where a "%" stands, and take a name with markup in it for the picture itself. */
bool isPictureName(std::string_view text, int mostNumbers)
{
    int numbers = 0;
    for (std::size_t at = text.find('%'); at != std::string_view::npos; at = text.find('%', at + 1)) {
        const std::size_t end = text.find_first_not_of("0123456789", at + 1);
        if (end == std::string_view::npos || text[end] != 'd' || end - at > 3)
            return false;
        ++numbers;
    }
    return numbers <= mostNumbers && text.find('<') == std::string_view::npos;
}

/** "raw", or the same of each piece of an animation that holds: "0|=raw;10|=other". */
bool isItem(const ParamDescription& param, std::string_view text)
{
    const auto known = [&param](std::string_view raw) {
        return std::any_of(param.items.begin(), param.items.end(),
                           [raw](const ListItem& item) { return item.raw == raw; });
    };
    if (text.empty() || known(text))
        return true;
    while (!text.empty()) {
        const std::string_view piece = text.substr(0, text.find(';'));
        const std::size_t equals = piece.find('=');
        if (equals == std::string_view::npos || !consistsOf(piece.substr(0, equals), "0123456789|-") ||
            !known(piece.substr(equals + 1)))
            return false;
        text.remove_prefix(std::min(piece.size() + 1, text.size()));
    }
    return true;
}
} // namespace

std::optional<ValueKind> valueKindNamed(std::string_view name)
{
    static constexpr std::array<std::pair<std::string_view, ValueKind>, 6> names = {{{"number", ValueKind::Number},
                                                                                     {"word", ValueKind::Word},
                                                                                     {"colour", ValueKind::Colour},
                                                                                     {"file", ValueKind::File},
                                                                                     {"still", ValueKind::Still},
                                                                                     {"map", ValueKind::Map}}};
    for (const auto& [known, kind] : names)
        if (known == name)
            return kind;
    return std::nullopt;
}

bool isValue(ValueKind kind, std::string_view text)
{
    switch (kind) {
    case ValueKind::Number:
        return consistsOf(text, kNumberSigns);
    case ValueKind::Word:
        return isWord(text);
    case ValueKind::Colour:
        return isColour(text);
    case ValueKind::File:
        return isPlainPath(text) && !hasExtension(text, kProgramExtensions);
    case ValueKind::Still:
        return isPlainPath(text) && hasExtension(text, kStillExtensions) && isPictureName(text, 1);
    case ValueKind::Map:
        return isPlainPath(text) && hasExtension(text, kStillExtensions) && isPictureName(text, 0);
    }
    return false;
}

bool isValueOf(const ParamDescription& param, std::string_view text)
{
    switch (param.kind) {
    case ParamKind::Colour:
        return isColour(text) || consistsOf(text, kNumberSigns);
    case ParamKind::Point:
        return consistsOf(text, std::string(kNumberSigns) + param.format);
    case ParamKind::IntList:
    case ParamKind::TextList:
        return isItem(param, text);
    case ParamKind::Double:
    case ParamKind::Bool:
    case ParamKind::Angle:
    case ParamKind::Range:
    case ParamKind::VideoInput:
        return consistsOf(text, kNumberSigns);
    }
    return false;
}

} // namespace workbench
