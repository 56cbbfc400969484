#include "workbench/engine/worker/catalogue/Overlay.h"

#include "oribund/host/effects/params/EffectValParamBase.h"
#include "workbench/engine/worker/catalogue/EffectMapping.h"
#include "workbench/engine/worker/catalogue/MetadataText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <utility>

namespace workbench
{

namespace
{

using Json = nlohmann::json;

void readText(const Json& object, const char* key, std::string& target)
{
    const auto found = object.find(key);
    if (found != object.end() && found->is_string())
        target = found->get<std::string>();
}

void readNumber(const Json& object, const char* key, double& target)
{
    const auto found = object.find(key);
    if (found != object.end() && found->is_number())
        target = found->get<double>();
}

void readSwitch(const Json& object, const char* key, bool& target)
{
    const auto found = object.find(key);
    if (found != object.end() && found->is_boolean())
        target = found->get<bool>();
}

/** One text, or a list of them. */
void readTexts(const Json& object, const char* key, std::vector<std::string>& target)
{
    const auto found = object.find(key);
    if (found == object.end())
        return;
    target.clear();
    for (const Json& entry : found->is_array() ? *found : Json::array({*found}))
        if (entry.is_string())
            target.push_back(entry.get<std::string>());
}

/** False when one of them is none. */
bool readFlags(const Json& object, unsigned& target)
{
    namespace Display = oribund::ParamDisplay;
    static constexpr std::array<std::pair<std::string_view, unsigned>, 5> names = {
        {{"colourRange", Display::kColourRange},
         {"colourOffset", Display::kColourOffset},
         {"tonalRanges", Display::kTonalRanges},
         {"percentage", Display::kPercentage},
         {"plain", Display::kPlainNumber}}};
    std::vector<std::string> flags;
    readTexts(object, "flags", flags);
    for (const std::string& flag : flags) {
        const auto* const known =
            std::find_if(names.begin(), names.end(), [&flag](const auto& entry) { return entry.first == flag; });
        if (known == names.end())
            return false;
        target |= known->second;
    }
    return true;
}

std::optional<ParamKind> kindNamed(std::string_view name)
{
    static constexpr std::array<std::pair<std::string_view, ParamKind>, 8> names = {
        {{"double", ParamKind::Double},
         {"bool", ParamKind::Bool},
         {"angle", ParamKind::Angle},
         {"colour", ParamKind::Colour},
         {"point", ParamKind::Point},
         {"range", ParamKind::Range},
         {"intlist", ParamKind::IntList},
         {"textlist", ParamKind::TextList}}};
    for (const auto& [known, kind] : names)
        if (known == name)
            return kind;
    return std::nullopt;
}

bool isList(const ParamDescription& param)
{
    return param.kind == ParamKind::IntList || param.kind == ParamKind::TextList;
}

/** Place of a list item by its raw text; -1 when there is none. */
int itemIndex(const ParamDescription& param, const std::string& raw)
{
    const auto found =
        std::find_if(param.items.begin(), param.items.end(), [&](const ListItem& item) { return item.raw == raw; });
    return found == param.items.end() ? -1 : static_cast<int>(found - param.items.begin());
}

/** "#rrggbb" and its like, or the three or four components as numbers. */
std::optional<std::array<double, 4>> readColour(const Json& value)
{
    if (value.is_string())
        return parseColour(value.get<std::string>());
    std::array<double, 4> colour{0.0, 0.0, 0.0, 1.0};
    if (!value.is_array() || value.size() < 3 || value.size() > 4)
        return std::nullopt;
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (!value[i].is_number())
            return std::nullopt;
        colour[i] = value[i].get<double>();
    }
    return colour;
}

/** A value in the form that the parameter's kind asks for; empty when it has another form. */
std::optional<DemoValue> readValue(const Json& value, const ParamDescription& param)
{
    if (param.kind == ParamKind::Bool && value.is_boolean())
        return DemoValue(value.get<bool>() ? 1 : 0);
    if ((param.kind == ParamKind::Double || param.kind == ParamKind::Angle) && value.is_number())
        return DemoValue(value.get<double>());
    if (isList(param) && value.is_string())
        return DemoValue(itemIndex(param, value.get<std::string>()));
    if (param.kind == ParamKind::Colour || (param.kind == ParamKind::Range && value.size() == 4))
        if (const auto colour = readColour(value))
            return DemoValue(*colour);
    if (param.kind == ParamKind::Point && value.is_array() && value.size() == 2 && value[0].is_number() &&
        value[1].is_number())
        return DemoValue(std::array<double, 2>{value[0].get<double>(), value[1].get<double>()});
    return std::nullopt;
}

void setDefault(const DemoValue& value, ParamDescription& param)
{
    if (const double* number = std::get_if<double>(&value))
        param.defaultValue = *number;
    else if (const int* item = std::get_if<int>(&value); item && param.kind == ParamKind::Bool)
        param.defaultBool = *item != 0;
    else if (item)
        param.defaultItem = *item;
    else if (const auto* colour = std::get_if<std::array<double, 4>>(&value))
        param.defaultColour = *colour;
    else if (const auto* point = std::get_if<std::array<double, 2>>(&value))
        param.defaultPoint = *point;
}

void readItems(const Json& source, ParamDescription& param)
{
    const auto found = source.find("items");
    if (found == source.end() || !found->is_array())
        return;
    param.items.clear();
    for (const Json& item : *found)
        if (item.is_array() && item.size() == 2 && item[0].is_string() && item[1].is_string())
            param.items.push_back({item[0].get<std::string>(), item[1].get<std::string>()});
}

/** Range and default in shown units: what the metadata says, converted, then what the overlay says. */
void readRange(const Json& source, ParamDescription& param)
{
    readNumber(source, "scale", param.scale);
    readNumber(source, "offset", param.offset);
    for (double* value : {&param.minimum, &param.maximum, &param.defaultValue})
        *value = *value * param.scale + param.offset;
    if (param.minimum > param.maximum)
        std::swap(param.minimum, param.maximum);
    readNumber(source, "min", param.minimum);
    readNumber(source, "max", param.maximum);
}

/** The mistake that was found, if any. */
std::string readParam(const Json& source, ParamDescription& param)
{
    readText(source, "name", param.name);
    readText(source, "unit", param.unit);
    readText(source, "help", param.help);
    readText(source, "format", param.format);
    readSwitch(source, "integer", param.integer);
    readSwitch(source, "animatable", param.animatable);
    readSwitch(source, "collapsed", param.collapsed);
    readTexts(source, "group", param.groups);
    readTexts(source, "components", param.components);
    if (const auto kind = source.find("kind"); kind != source.end()) {
        const std::optional<ParamKind> named = kind->is_string() ? kindNamed(kind->get<std::string>()) : std::nullopt;
        if (!named)
            return "kind is unknown";
        param.kind = *named;
    }
    if (!readFlags(source, param.displayFlags))
        return "a flag is unknown";
    if (const auto shown = source.find("shown"); shown != source.end() && shown->is_object()) {
        readText(*shown, "with", param.shownWith);
        readTexts(*shown, "is", param.shownWithValues);
    }
    readItems(source, param);
    readRange(source, param);
    for (const char* key : {"default", "demo"}) {
        const auto found = source.find(key);
        if (found == source.end())
            continue;
        const std::optional<DemoValue> value = readValue(*found, param);
        if (!value)
            return std::string(key) + " has the wrong form";
        if (std::string_view(key) == "demo")
            param.demo = value;
        else
            setDefault(*value, param);
    }
    return checkParam(param);
}

/** The title, and the category behind it. */
bool readTitle(const Json& source, EffectDescription& effect)
{
    std::vector<std::string> texts;
    for (const Json& text : source.is_array() ? source : Json::array())
        if (text.is_string())
            texts.push_back(text.get<std::string>());
    if (texts.size() != 2)
        return false;
    effect.title = texts[0];
    effect.category = texts[1];
    return true;
}

/** Changes parameters that the metadata describes; the others stay, and so does their order. */
void limitParams(const Json& source, EffectDescription& effect, std::vector<std::string>& problems)
{
    readText(source, "help", effect.help);
    for (const Json& name : source.value("omit", Json::array()))
        std::erase_if(effect.params,
                      [&](const ParamDescription& param) { return name.is_string() && name == param.property; });
    for (const Json& entry : source.value("params", Json::array())) {
        std::string property;
        if (entry.is_object())
            readText(entry, "property", property);
        const auto known = std::find_if(effect.params.begin(), effect.params.end(),
                                        [&](const ParamDescription& param) { return param.property == property; });
        if (known == effect.params.end())
            continue; // another version of the effect
        ParamDescription limited = *known;
        if (const std::string problem = readParam(entry, limited); problem.empty())
            *known = std::move(limited);
        else
            problems.push_back(effect.service + ", " + property + ": " + problem);
    }
}

std::vector<ParamDescription> readParams(const Json& source, const EffectDescription& effect,
                                         std::vector<std::string>& problems)
{
    std::vector<ParamDescription> params;
    for (const Json& entry : source) {
        ParamDescription param;
        if (entry.is_object())
            readText(entry, "property", param.property);
        if (param.property.empty()) {
            problems.push_back(effect.service + ": a parameter has no property");
            continue;
        }
        if (const ParamDescription* known = effect.find(param.property))
            param = *known;
        if (const std::string problem = readParam(entry, param); !problem.empty())
            problems.push_back(effect.service + ", " + param.property + ": " + problem);
        else
            params.push_back(std::move(param));
    }
    return params;
}

/** Whether a name fits a pattern in which each "*" stands for any text. */
bool matches(std::string_view pattern, std::string_view name)
{
    const std::size_t star = pattern.find('*');
    if (star == std::string_view::npos)
        return pattern == name;
    if (!name.starts_with(pattern.substr(0, star)))
        return false;
    for (std::size_t skip = star; skip <= name.size(); ++skip)
        if (matches(pattern.substr(star + 1), name.substr(skip)))
            return true;
    return false;
}

} // namespace

struct Overlay::Content {
    std::map<std::string, Json, std::less<>> effects;
    std::map<std::string, Json, std::less<>> limits;
    std::map<std::string, Json, std::less<>> titles;
    std::vector<std::pair<std::string, std::string>> blocked; // pattern, reason
};

Overlay::Overlay(std::string_view json, std::vector<std::string>& problems)
    : content_(std::make_unique<Content>())
{
    const Json root = Json::parse(json, nullptr, false, true);
    if (root.is_discarded() || !root.is_object()) {
        problems.emplace_back("The effect overlay is not valid JSON; effects are shown as they describe themselves.");
        return;
    }
    const auto each = [&](const char* section, const auto& take) {
        const auto found = root.find(section);
        for (const Json& entry : found != root.end() && found->is_array() ? *found : Json::array()) {
            std::string service;
            if (entry.is_object())
                readText(entry, "service", service);
            if (service.empty())
                problems.push_back(std::string("effect overlay: an entry of \"") + section + "\" names no service");
            else
                take(service, entry);
        }
    };
    const auto eachOnce = [&](const char* section, auto& target) {
        each(section, [&](const std::string& service, const Json& entry) {
            if (!target.emplace(service, entry).second)
                problems.push_back("effect overlay: " + service + " is described twice");
        });
    };
    if (const auto titles = root.find("titles"); titles != root.end() && titles->is_object())
        for (const auto& [service, entry] : titles->items())
            content_->titles.emplace(service, entry);
    eachOnce("effects", content_->effects);
    eachOnce("limits", content_->limits);
    each("blocked", [&](const std::string& service, const Json& entry) {
        std::string reason = "It does not work reliably.";
        readText(entry, "reason", reason);
        content_->blocked.emplace_back(service, reason);
    });
}

Overlay::~Overlay() = default;

std::vector<EffectDescription> Overlay::missing(const EffectCatalogue& catalogue,
                                                std::vector<std::string>& problems) const
{
    std::vector<EffectDescription> missing;
    for (const auto& [service, source] : content_->effects) {
        bool isOwn = false;
        readSwitch(source, "own", isOwn);
        if (!isOwn || catalogue.find(service))
            continue;
        EffectDescription effect;
        effect.service = service;
        apply(effect, problems);
        effect.blockedBecause = "It belongs to this program, but its file is missing. Install the program again.";
        missing.push_back(std::move(effect));
    }
    return missing;
}

void Overlay::apply(EffectDescription& effect, std::vector<std::string>& problems) const
{
    for (const auto& [pattern, reason] : content_->blocked)
        if (matches(pattern, effect.service)) {
            effect.blockedBecause = reason;
            return;
        }
    if (const auto named = content_->titles.find(effect.service); named != content_->titles.end()) {
        if (!readTitle(named->second, effect))
            problems.push_back(effect.service + ": its title has the wrong form");
    }
    if (const auto limited = content_->limits.find(effect.service); limited != content_->limits.end())
        limitParams(limited->second, effect, problems);
    const auto found = content_->effects.find(effect.service);
    if (found == content_->effects.end())
        return;

    const Json& source = found->second;
    readText(source, "title", effect.title);
    readText(source, "category", effect.category);
    readText(source, "help", effect.help);
    if (const auto fixed = source.find("fixed"); fixed != source.end() && fixed->is_object())
        for (const auto& [property, value] : fixed->items())
            if (value.is_string())
                effect.fixedProperties.emplace_back(property, value.get<std::string>());
    if (const auto params = source.find("params"); params != source.end() && params->is_array()) {
        effect.params = readParams(*params, effect, problems);
        effect.blockedBecause.clear();
    }
    effect.curated = true;
}

std::string Overlay::whyNoMask(const EffectDescription& effect) const
{
    for (const auto* entries : {&content_->effects, &content_->limits}) {
        const auto entry = entries->find(effect.service);
        const auto said = entry == entries->end() ? Json::const_iterator() : entry->second.find("maskable");
        if (entry == entries->end() || said == entry->second.end())
            continue;
        if (said->is_string())
            return said->get<std::string>();
        if (said->is_boolean() && said->get<bool>())
            return {};
    }
    return whyNoMaskByKind(effect);
}

} // namespace workbench
