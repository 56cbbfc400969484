#include "workbench/engine/worker/catalogue/PointPairs.h"

#include "workbench/engine/worker/catalogue/MetadataText.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace workbench
{

namespace
{

bool standsAlone(const std::string& text, std::size_t at)
{
    const auto isLetter = [&](std::size_t i) { return std::isalpha(static_cast<unsigned char>(text[i])) != 0; };
    return (at == 0 || !isLetter(at - 1)) && (at + 1 == text.size() || !isLetter(at + 1));
}

/** What is left of two names that tell X from Y, such as "start" of "Start x" and "Start y"; nothing for others. */
std::optional<std::string> placeNamed(const std::string& one, const std::string& other)
{
    std::string name = lowerCase(one);
    const std::string second = lowerCase(other);
    const auto apart = std::mismatch(name.begin(), name.end(), second.begin(), second.end());
    if (apart.first == name.end() || name.size() != second.size() || *apart.first != 'x' || *apart.second != 'y' ||
        !std::equal(apart.first + 1, name.end(), apart.second + 1))
        return std::nullopt;
    const auto at = static_cast<std::size_t>(apart.first - name.begin());
    if (!standsAlone(name, at))
        return std::nullopt;
    name.erase(at, 1);
    while (!name.empty() && name.back() == ' ')
        name.pop_back();
    while (!name.empty() && name.front() == ' ')
        name.erase(0, 1);
    if (const std::size_t gap = name.find("  "); gap != std::string::npos)
        name.erase(gap, 1);
    static constexpr std::array<std::string_view, 5> places = {"position", "center", "centre", "start", "end"};
    const bool isPlace =
        std::any_of(places.begin(), places.end(), [&](std::string_view p) { return name.ends_with(p); });
    return name.empty() ? "position" : isPlace ? std::optional(name) : std::nullopt;
}

bool isPartOfFrame(const ParamDescription& param)
{
    return param.kind == ParamKind::Double && !param.integer && param.minimum == 0.0 && param.maximum == 1.0 &&
           param.unit.empty();
}

std::optional<ParamDescription> paired(const ParamDescription& x, const ParamDescription& y)
{
    if (!isPartOfFrame(x) || !isPartOfFrame(y) || x.animatable != y.animatable)
        return std::nullopt;
    const auto name = placeNamed(x.name, y.name);
    if (!name)
        return std::nullopt;
    ParamDescription point = x;
    point.kind = ParamKind::Point;
    point.property = x.property + '/' + y.property;
    point.name = readableName(*name);
    point.components = {x.property, y.property};
    point.defaultPoint = {x.defaultValue, y.defaultValue};
    return point;
}

} // namespace

void pairPoints(std::vector<ParamDescription>& params)
{
    for (std::size_t i = 0; i + 1 < params.size(); ++i)
        if (auto point = paired(params[i], params[i + 1])) {
            params[i] = std::move(*point);
            params.erase(params.begin() + static_cast<std::ptrdiff_t>(i) + 1);
        }
}

} // namespace workbench
