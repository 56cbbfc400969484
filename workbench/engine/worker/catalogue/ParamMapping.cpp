#include "workbench/engine/worker/catalogue/ParamMapping.h"

#include "workbench/engine/worker/catalogue/MetadataText.h"

#include <algorithm>
#include <cmath>

namespace workbench
{

namespace
{

/** Values beyond this are a type's limits rather than the limits of a setting. */
constexpr double kLargestSensible = 1e6;

std::optional<double> sensibleNumber(const std::string& text)
{
    const std::optional<double> value = parseNumber(text);
    return value && std::abs(*value) <= kLargestSensible ? value : std::nullopt;
}

/** The next of 1, 2, 5, 10, 20, ... that is not smaller. */
double roundUpNicely(double value)
{
    const double power = std::pow(10.0, std::floor(std::log10(value)));
    for (const double step : {1.0, 2.0, 5.0})
        if (step * power >= value * (1.0 - 1e-9))
            return step * power;
    return 10.0 * power;
}

void mapRange(const RawParam& raw, ParamDescription& param)
{
    std::optional<double> low = sensibleNumber(raw.minimum);
    std::optional<double> high = sensibleNumber(raw.maximum);
    const std::optional<double> standard = sensibleNumber(raw.defaultText);
    if (low && high && *low > *high)
        std::swap(low, high);

    const double reach = roundUpNicely(10.0 * std::max({std::abs(standard.value_or(0.0)), std::abs(low.value_or(0.0)),
                                                        std::abs(high.value_or(0.0)) / 10.0, 1.0}));
    // Most sizes and distances say no limits either, and crash below 0: that way only where the default leads there.
    const bool isSigned = standard.value_or(0.0) < 0.0 || (high && *high < 0.0);
    if (!low)
        low = isSigned ? -reach : 0.0;
    if (!high)
        high = reach;

    param.defaultValue = standard.value_or(std::clamp(0.0, std::min(*low, *high), std::max(*low, *high)));
    param.minimum = std::min(*low, param.defaultValue);
    param.maximum = std::max(*high, param.defaultValue);
    if (!(param.minimum < param.maximum))
        param.maximum = param.minimum + 1.0;
    if (param.integer) {
        param.minimum = std::floor(param.minimum);
        param.maximum = std::ceil(param.maximum);
        param.defaultValue = std::round(param.defaultValue);
    }
}

bool isAngle(const RawParam& raw, const ParamDescription& param)
{
    if (raw.unit == "degrees" || raw.unit == "degree")
        return true;
    const std::string title = lowerCase(raw.title);
    const bool named = title.find("angle") != std::string::npos || title.find("rotat") != std::string::npos;
    const double span = param.maximum - param.minimum;
    return named && (span == 180.0 || span == 360.0 || span == 720.0);
}

std::string shownUnit(const std::string& unit)
{
    if (unit == "percent")
        return "%";
    if (unit == "pixels" || unit == "pixel")
        return "px";
    if (unit == "seconds")
        return "s";
    if (unit == "degrees" || unit == "degree")
        return "";
    return unquoted(unit);
}

bool mapList(const RawParam& raw, ParamDescription& param)
{
    std::vector<std::string> values = raw.values.empty() ? choicesInProse(raw.description) : raw.values;
    std::erase(values, std::string());
    const std::string standard = unquoted(raw.defaultText);
    const auto found = std::find(values.begin(), values.end(), standard);
    if (raw.values.empty() && (values.size() < 2 || found == values.end()))
        return false;
    if (values.empty())
        return false;

    param.kind = raw.type == "integer" ? ParamKind::IntList : ParamKind::TextList;
    // With an unknown default only the service can choose it, which it does for an empty text.
    if (found == values.end())
        param.items.push_back({"Default", ""});
    else
        param.defaultItem = static_cast<int>(found - values.begin());
    for (const std::string& value : values)
        param.items.push_back({readableName(value), value});
    return true;
}

bool mapColour(const RawParam& raw, ParamDescription& param)
{
    const std::optional<std::array<double, 4>> standard = parseColour(unquoted(raw.defaultText));
    const bool calledColour = raw.type == "color" || raw.widget == "color";
    const bool soundsLikeOne =
        standard && !parseNumber(raw.defaultText) && lowerCase(raw.description).find("color") != std::string::npos;
    if (!calledColour && !(raw.type == "string" && soundsLikeOne))
        return false;
    param.kind = ParamKind::Colour;
    if (param.property.starts_with("av."))
        param.format = "rgba";
    param.defaultColour = standard.value_or(std::array<double, 4>{0.0, 0.0, 0.0, 1.0});
    return true;
}

bool mapSwitch(const RawParam& raw, ParamDescription& param)
{
    const std::optional<double> low = parseNumber(raw.minimum);
    const std::optional<double> high = parseNumber(raw.maximum);
    const bool zeroOrOne = raw.type == "integer" && low == 0.0 && high == 1.0;
    if (raw.type != "boolean" && !zeroOrOne && !(raw.type == "integer" && raw.widget == "checkbox"))
        return false;
    const std::string standard = lowerCase(unquoted(raw.defaultText));
    param.kind = ParamKind::Bool;
    param.animatable = false;
    param.defaultBool = standard == "yes" || standard == "true" || parseNumber(standard).value_or(0.0) != 0.0;
    return true;
}

bool mapNumber(const RawParam& raw, ParamDescription& param)
{
    const bool numberInText = raw.type == "string" && parseNumber(raw.defaultText);
    if (raw.type != "float" && raw.type != "integer" && !numberInText)
        return false;
    param.integer = raw.type == "integer";
    mapRange(raw, param);
    param.kind = isAngle(raw, param) ? ParamKind::Angle : ParamKind::Double;
    return true;
}

/** The title; else the description, where it is short enough for a label; else the name of the property. */
std::string labelOf(const RawParam& raw, const std::string& property)
{
    std::string label = readableName(unquoted(raw.title));
    if (label.empty())
        label = labelFromSentence(raw.description);
    return label.empty() ? readableName(property) : label;
}

/** Properties that steer the rendering rather than the look. */
bool isHousekeeping(const std::string& property)
{
    static const std::array<std::string_view, 7> names = {
        "threads", "av.threads", "position", "av.enable", "mlt_image_format", "av.blocksize", "av.block_size"};
    return std::find(names.begin(), names.end(), property) != names.end();
}

} // namespace

std::optional<ParamDescription> mapParameter(const RawParam& raw)
{
    const std::string property = unquoted(raw.identifier);
    if (property.empty() || raw.readOnly || isHousekeeping(property) ||
        property.find_first_of("*<> ") != std::string::npos ||
        lowerCase(raw.title).find("deprecated") != std::string::npos)
        return std::nullopt;

    ParamDescription param;
    param.property = property;
    param.name = labelOf(raw, property);
    param.help = raw.description;
    param.unit = shownUnit(raw.unit);
    param.animatable = raw.animated;
    if (mapSwitch(raw, param) || mapColour(raw, param) || mapNumber(raw, param))
        return param;
    if ((raw.type == "string" || raw.type == "integer" || raw.type.empty()) && mapList(raw, param)) {
        param.animatable = false;
        return param;
    }
    return std::nullopt;
}

} // namespace workbench
