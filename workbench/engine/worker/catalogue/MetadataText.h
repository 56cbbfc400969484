#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace workbench
{

// Texts of the metadata, read leniently.

std::string lowerCase(std::string_view text);

/** Without blanks and one pair of quotes around it. */
std::string unquoted(std::string_view text);

/** An identifier or a title as a person reads it: "av.luma_amount" becomes "Luma amount", "BlockSize" "Block size". */
std::string readableName(std::string_view identifier);

/** What an instruction such as "set the blur radius, in pixels" asks for: "Blur radius". Empty when it is no label. */
std::string labelFromSentence(std::string_view sentence);

/** "#rrggbb", "#aarrggbb", "0xrrggbbaa" or the name of a basic colour, as r, g, b, a. */
std::optional<std::array<double, 4>> parseColour(std::string_view text);

/** A whole text as a number, with "." whatever the locale; surrounding quotes are allowed. Always finite. */
std::optional<double> parseNumber(std::string_view text);

/** The values that a sentence such as "One of: heat, sepia, xray" lists; empty when it lists none. */
std::vector<std::string> choicesInProse(std::string_view description);

} // namespace workbench
