#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>

namespace workbench
{

using Json = nlohmann::json;

struct ParsedJson {
    Json value;
    std::string error; ///< what is wrong with the text and where; empty when nothing is
};

/** Reads JSON. Text that is nested deeper than anything this program writes counts as wrong. Never throws. */
ParsedJson parseJson(std::string_view text);

/** On one line and in ASCII, so that it passes unchanged through whatever holds it. Numbers read back exactly. */
std::string compactText(const Json& json);

/** Indented, for a person; ends with a line break. */
std::string readableText(const Json& json);

} // namespace workbench
