#include "workbench/store/files/PathText.h"

#include "oribund/host/base/LightweightString.h"

#include <charconv>
#include <string_view>

namespace workbench
{

namespace
{
constexpr std::string_view kEscaped = "file:";
constexpr std::string_view kPlain = "/._-0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr std::string_view kHexadecimal = "0123456789ABCDEF";

bool isUtf8(const std::string& text)
{
    return oribund::toUTF8(oribund::toWide(std::string_view(text))).view() == text;
}
} // namespace

std::string textOfPath(const std::string& path)
{
    if (isUtf8(path))
        return path;
    std::string text(kEscaped);
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        if (kPlain.find(c) != std::string_view::npos)
            text += c;
        else
            text.append({'%', kHexadecimal[byte >> 4], kHexadecimal[byte & 15]});
    }
    return text;
}

std::string pathOfText(const std::string& text)
{
    if (!text.starts_with(kEscaped))
        return text;
    std::string path;
    for (std::size_t i = kEscaped.size(); i < text.size(); ++i) {
        unsigned byte = 0;
        const char* const digits = text.data() + i + 1;
        if (text[i] == '%' && i + 2 < text.size() && std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2) {
            path += static_cast<char>(byte);
            i += 2;
        } else {
            path += text[i];
        }
    }
    return path;
}

} // namespace workbench
