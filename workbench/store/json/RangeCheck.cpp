#include "workbench/store/json/RangeCheck.h"

#include "workbench/model/EffectCatalogue.h"
#include "workbench/model/projection/ServiceText.h"
#include "workbench/store/json/JsonFields.h"

#include <algorithm>
#include <vector>

namespace workbench
{

namespace
{

bool hasRange(ParamKind kind)
{
    return kind == ParamKind::Double || kind == ParamKind::Angle || kind == ParamKind::Range ||
           kind == ParamKind::Point;
}

/** The numbers of a value; none for a text or a switch. */
std::vector<double> numbersIn(const PlainValue& value)
{
    if (const auto* number = std::get_if<double>(&value))
        return {*number};
    if (const auto* four = std::get_if<std::array<double, 4>>(&value))
        return {four->begin(), four->end()};
    if (const auto* two = std::get_if<std::array<double, 2>>(&value))
        return {two->begin(), two->end()};
    return {};
}

void check(const ParamData& param, const ParamDescription& known, const std::string& effect, Warnings& warnings)
{
    const auto isOutside = [&](double number) { return number < known.minimum || number > known.maximum; };
    const std::vector<double> numbers = numbersIn(param.constant);
    const auto found = std::ranges::find_if(numbers, isOutside);
    if (param.keyframed || found == numbers.end())
        return;
    const auto text = [&](double number) { return serviceNumber(number) + known.unit; };
    const std::string name = '"' + known.name + "\" of \"" + effect + '"';
    const std::string now = "; it goes from " + text(known.minimum) + " to " + text(known.maximum) + " now.";
    warnings.add(name + " was " + text(*found) + " and is " + text(std::clamp(*found, known.minimum, known.maximum)) +
                 now);
}

} // namespace

void warnOfRanges(const EditData& edit, const EffectCatalogue& catalogue, Warnings& warnings)
{
    for (const TrackData& track : edit.tracks)
        for (const SegmentData& segment : track.segments)
            for (const EffectData& effect : segment.effects) {
                const EffectCatalogue::Entry known = catalogue.find(effect.service);
                for (const ParamData& param : effect.params)
                    if (const ParamDescription* const description = known ? known->find(param.property) : nullptr;
                        description && hasRange(description->kind))
                        check(param, *description, known->title, warnings);
            }
}

} // namespace workbench
