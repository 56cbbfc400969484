#include "workbench/model/projection/AllowList.h"

#include "workbench/model/projection/MaskFilters.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace workbench
{

namespace
{
constexpr std::string_view kBlanks = " \t\r";
constexpr std::string_view kResource = "resource";

/** Takes the first word off a line. */
std::string_view takeWord(std::string_view& line)
{
    line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
    const std::string_view word = line.substr(0, line.find_first_of(kBlanks));
    line.remove_prefix(word.size());
    return word;
}

std::optional<AllowList::Use> useNamed(std::string_view name)
{
    if (name == "producer")
        return AllowList::Use::Producer;
    if (name == "filter")
        return AllowList::Use::Filter;
    return name == "transition" ? std::optional(AllowList::Use::Transition) : std::nullopt;
}
} // namespace

AllowList::AllowList(EffectCatalogue effects, std::string_view rules)
    : effects_(std::move(effects))
{
    while (!rules.empty()) {
        const std::string_view line = rules.substr(0, rules.find('\n'));
        rules.remove_prefix(std::min(line.size() + 1, rules.size()));
        addRule(line);
    }
}

void AllowList::addRule(std::string_view line)
{
    const auto use = useNamed(takeWord(line));
    const std::string_view service = takeWord(line);
    if (!use || service.empty())
        return;
    Rule rule{*use, std::string(service), {}};
    for (std::string_view word = takeWord(line); !word.empty(); word = takeWord(line)) {
        const std::size_t equals = std::min(word.find('='), word.size() - 1);
        const auto kind = valueKindNamed(word.substr(equals + 1));
        if (!kind)
            return;
        rule.properties.emplace(word.substr(0, equals), *kind);
    }
    rules_.push_back(std::move(rule));
}

const AllowList::Rule* AllowList::findRule(Use use, std::string_view service) const
{
    const auto found = std::find_if(rules_.begin(), rules_.end(),
                                    [&](const Rule& rule) { return rule.use == use && rule.service == service; });
    return found == rules_.end() ? nullptr : &*found;
}

std::string AllowList::refuseEffect(std::string_view service) const
{
    const EffectCatalogue::Entry effect = effects_.find(service);
    if (!effect)
        return "It is not installed, or is none that a project may use.";
    return effect->blockedBecause;
}

bool AllowList::allowsService(Use use, std::string_view service) const
{
    if (use == Use::MaskFilter)
        return maskFilterDescription(service) != nullptr;
    return use == Use::Filter ? refuseEffect(service).empty() : findRule(use, service) != nullptr;
}

bool AllowList::allowsProperty(Use use, std::string_view service, std::string_view property,
                               std::string_view value) const
{
    if (!allowsService(use, service))
        return false;
    if (use == Use::MaskFilter)
        return allowsSetting(*maskFilterDescription(service), property, value);
    if (use == Use::Filter && allowsSetting(*effects_.find(service), property, value))
        return true;
    const Rule* const rule = findRule(use, service);
    const auto found = rule ? rule->properties.find(property) : Properties::const_iterator();
    return rule && found != rule->properties.end() && isValue(found->second, value);
}

bool AllowList::allowsSetting(const EffectDescription& effect, std::string_view property, std::string_view value) const
{
    if (property == "disable")
        return value == "0" || value == "1";
    for (const auto& [name, fixed] : effect.fixedProperties)
        if (name == property && fixed == value)
            return true;
    for (const ParamDescription& param : effect.params) {
        if (param.components.empty()
                ? param.property == property && isValueOf(param, value)
                : std::find(param.components.begin(), param.components.end(), property) != param.components.end() &&
                      isValue(ValueKind::Number, value))
            return true;
    }
    return false;
}

std::optional<AllowList::Source> AllowList::sourceOf(std::string_view medium) const
{
    if (!medium.starts_with('/')) {
        const std::size_t colon = std::min(medium.find(':'), medium.size());
        const std::string_view service = medium.substr(0, colon);
        const std::string_view resource = medium.substr(std::min(colon + 1, medium.size()));
        if (!allowsProperty(Use::Producer, service, kResource, resource))
            return std::nullopt;
        return Source{std::string(service), std::string(resource)};
    }
    for (const Rule& rule : rules_)
        if (const auto kind = rule.properties.find(kResource);
            rule.use == Use::Producer && kind != rule.properties.end() && isValue(kind->second, medium))
            return Source{rule.service, std::string(medium)};
    return std::nullopt;
}

} // namespace workbench
