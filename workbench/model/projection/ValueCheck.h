#pragma once

#include <optional>
#include <string_view>

namespace workbench
{

struct ParamDescription;

/** What a property of a service may hold. */
enum class ValueKind {
    Number, ///< a number, several with blanks between them, or an animation of numbers
    Word,   ///< letters, digits, ".", "_" and "-"
    Colour, ///< a number with "#" or "0x" before it, a basic colour's name, or an animation of such numbers
    File,   ///< an absolute path, read as a film or recording
    Still,  ///< an absolute path with the extension of a picture; one number in it may be "%d": a row of pictures
    Map     ///< as Still, without "%"
};

/** The kind that an allow list calls so. */
std::optional<ValueKind> valueKindNamed(std::string_view name);

/** Looks at the text only; whether a file is there is not asked. */
bool isValue(ValueKind kind, std::string_view text);

/** Whether a parameter of the catalogue can have been written as this text. */
bool isValueOf(const ParamDescription& param, std::string_view text);

} // namespace workbench
