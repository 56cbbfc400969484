#include "workbench/model/projection/MaskFilters.h"

#include "oribund/host/effects/params/EffectValParamBase.h"
#include "workbench/model/EffectDescription.h"
#include "workbench/model/Ids.h"
#include "workbench/model/MaskDescription.h"
#include "workbench/model/ModelEffect.h"
#include "workbench/model/projection/ServiceText.h"

#include <algorithm>
#include <array>

namespace workbench
{

namespace
{
constexpr const char* kBefore = "mask_start";
constexpr const char* kShape = "frei0r.alphaspot";
constexpr const char* kAfter = "mask_apply";

// Of the filter that draws the shape.
constexpr const char* kKindOfShape = "0";
constexpr const char* kOpacityOutside = "7";
constexpr const char* kOpacityInside = "8";

std::array<EffectDescription, 3> describeFilters()
{
    std::array<EffectDescription, 3> filters;
    filters[0].service = kBefore;
    // A flip in no direction changes nothing, and has the picture kept in full colour resolution, whatever the effect
    // works in.
    filters[0].fixedProperties = {{"filter", "frei0r.flippo"}, {"filter.0", "0"}, {"filter.1", "0"}};
    filters[1].service = kShape;
    filters[1].fixedProperties = {{"9", "0.5"}}; // no opacity but the lesser of the picture's and the shape's
    for (const char* property : {kKindOfShape, "1", "2", "3", "4", "5", "6", kOpacityOutside, kOpacityInside}) {
        ParamDescription number;
        number.property = property;
        filters[1].params.push_back(number);
    }
    filters[2].service = kAfter;
    filters[2].fixedProperties = {{"transition", "frei0r.cairoblend"}}; // the one that blends exactly
    return filters;
}

const std::array<EffectDescription, 3>& filterDescriptions()
{
    static const auto filters = describeFilters();
    return filters;
}

std::string idOf(const ModelEffect& mask, std::string_view part)
{
    return "mask" + std::to_string(objectOf(mask.id())) + std::string(part);
}

void bakeMaskParam(const ModelEffect& mask, int index, const BakeSpan& span, ProjectedProperties& properties)
{
    const ParamDescription& description = mask.description()->params[static_cast<std::size_t>(index)];
    const oribund::EffectValParamBase& param = *mask.paramAt(index);
    if (description.property == mask::kShape) {
        properties.push_back({kKindOfShape, serviceText(description, param.constantValue())});
    } else if (description.property == mask::kInvert) {
        const bool inverted = std::get<bool>(param.constantValue());
        properties.push_back({kOpacityOutside, inverted ? "1" : "0"});
        properties.push_back({kOpacityInside, inverted ? "0" : "1"});
    } else {
        bakeParam(description, param, span, properties);
    }
}
} // namespace

MaskFilters maskFilters(const ModelEffect& mask, const ProjectedFilter& effect, const BakeSpan& span)
{
    const bool isOff = !mask.isEnabled() || std::find(effect.properties.begin(), effect.properties.end(),
                                                      ProjectedProperty{"disable", "1"}) != effect.properties.end();
    const auto make = [&](const EffectDescription& description, std::string_view part) {
        ProjectedFilter filter{idOf(mask, part), description.service, effect.in, effect.out, {}, effect.name};
        filter.partOf = effect.id;
        filter.properties.push_back({"disable", isOff ? "1" : "0"});
        for (const auto& [name, value] : description.fixedProperties)
            filter.properties.push_back({name, value});
        return filter;
    };
    const auto& descriptions = filterDescriptions();
    MaskFilters filters{make(descriptions[0], "-before"), make(descriptions[1], ""), make(descriptions[2], "-after")};
    for (int i = 0; i < mask.paramCount(); ++i)
        bakeMaskParam(mask, i, span, filters.shape.properties);
    return filters;
}

std::vector<PropertyUpdate> maskParamUpdates(const ModelEffect& mask, int index, const BakeSpan& span)
{
    ProjectedProperties properties;
    bakeMaskParam(mask, index, span, properties);
    std::vector<PropertyUpdate> updates;
    for (ProjectedProperty& property : properties)
        updates.push_back({idOf(mask, ""), std::move(property.name), std::move(property.value)});
    return updates;
}

std::vector<PropertyUpdate> maskSwitchUpdates(const ModelEffect& mask, bool effectEnabled)
{
    std::vector<PropertyUpdate> updates;
    for (const char* part : {"-before", "", "-after"})
        updates.push_back({idOf(mask, part), "disable", effectEnabled && mask.isEnabled() ? "0" : "1"});
    return updates;
}

const EffectDescription* maskFilterDescription(std::string_view service)
{
    const auto& filters = filterDescriptions();
    const auto* const found = std::find_if(filters.begin(), filters.end(),
                                           [&](const EffectDescription& filter) { return filter.service == service; });
    return found == filters.end() ? nullptr : found;
}

} // namespace workbench
