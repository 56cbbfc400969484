#include "workbench/store/json/JsonText.h"

#include <algorithm>

namespace workbench
{

namespace
{
// What is read may be written again, which recurses.
constexpr int kDeepest = 64;

/** How deeply lists lie within lists, whether or not the rest of the text is good. */
int depthOf(std::string_view text)
{
    int depth = 0;
    int deepest = 0;
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quoted && c == '\\')
            ++i;
        else if (c == '"')
            quoted = !quoted;
        else if (!quoted && (c == '[' || c == '{'))
            deepest = std::max(deepest, ++depth);
        else if (!quoted && (c == ']' || c == '}'))
            --depth;
    }
    return deepest;
}
} // namespace

ParsedJson parseJson(std::string_view text)
{
    ParsedJson result;
    if (depthOf(text) > kDeepest) {
        result.error = "it is nested too deeply";
        return result;
    }
    try {
        result.value = Json::parse(text);
    } catch (const Json::exception& wrong) {
        // The library's text begins with a name and number of its own in brackets.
        const std::string_view what = wrong.what();
        const std::size_t start = what.find("] ");
        result.error = what.substr(start == std::string_view::npos ? 0 : start + 2);
    }
    return result;
}

std::string compactText(const Json& json)
{
    return json.dump(-1, ' ', true, Json::error_handler_t::replace);
}

std::string readableText(const Json& json)
{
    return json.dump(4, ' ', false, Json::error_handler_t::replace) + '\n';
}

} // namespace workbench
