#include "oribund/colour/ColEyeDropBase.h"

#include "oribund/host/base/HueSatLum.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <vector>

namespace oribund
{

namespace
{

constexpr double kHueTurn = 360.0;

/** Colours with less have a hue that nobody sees. */
constexpr double kLeastSaturation = 0.06;

/** How far the full selection goes beyond the colours, and the soft edge beyond that. */
struct Softness {
    double margin;
    double edge;
};

constexpr Softness kOfHue{6.0, 14.0};
constexpr Softness kOfSaturation{0.08, 0.12};
constexpr Softness kOfLuminance{0.08, 0.14};

/** From where to where most of the values lie: a twentieth at either end is left out. Sorts them. */
std::array<double, 2> mostOf(std::vector<double>& values)
{
    std::sort(values.begin(), values.end());
    const std::size_t cut = values.size() / 20;
    return {values[cut], values[values.size() - 1 - cut]};
}

ColourData softly(const std::array<double, 2>& band, const Softness& softness)
{
    const double low = band[0] - softness.margin;
    const double high = band[1] + softness.margin;
    return {{low - softness.edge, low, high, high + softness.edge}};
}

ColourData onUnitAxis(std::vector<double> values, const Softness& softness)
{
    ColourData range = softly(mostOf(values), softness);
    for (double& component : range.values)
        component = std::clamp(component, 0.0, 1.0);
    return range;
}

/** The hue that the colours lie about, the stronger ones counting for more. */
double meanHue(const std::vector<HueSatLum>& colours)
{
    constexpr double kDegree = std::numbers::pi / 180.0;
    double x = 0.0;
    double y = 0.0;
    for (const HueSatLum& colour : colours) {
        x += colour.saturation * std::cos(colour.hue * kDegree);
        y += colour.saturation * std::sin(colour.hue * kDegree);
    }
    return std::atan2(y, x) / kDegree;
}

constexpr ColourData kEveryHue{{0.0, 0.0, kHueTurn, kHueTurn}};

ColourData hueRangeOf(const std::vector<HueSatLum>& colours)
{
    const double mean = meanHue(colours);
    std::vector<double> hues;
    for (const HueSatLum& colour : colours)
        if (colour.saturation >= kLeastSaturation)
            hues.push_back(mean + std::remainder(colour.hue - mean, kHueTurn));
    if (hues.size() * 2 <= colours.size())
        return kEveryHue;
    const RangeAxis axis = ColEyeDropBase::hueAxis();
    return axis.inFirstTurn(axis.shown(softly(mostOf(hues), kOfHue)));
}

double lengthOf(const ColourData& range)
{
    return range[3] - range[0];
}

/** By whole turns next to another range. */
ColourData besides(const RangeAxis& axis, ColourData range, const ColourData& other)
{
    const double middle = (range[0] + range[3]) / 2.0;
    const double shift = axis.nearest(middle, (other[0] + other[3]) / 2.0) - middle;
    for (double& component : range.values)
        component += shift;
    return range;
}

ColourData united(const RangeAxis& axis, const ColourData& present, const ColourData& picked)
{
    const ColourData added = besides(axis, picked, present);
    const ColourData both{{std::min(present[0], added[0]), std::min(present[1], added[1]),
                           std::max(present[2], added[2]), std::max(present[3], added[3])}};
    return lengthOf(present) > axis.span ? present : axis.shown(both);
}

/** The present range without the picked one: cut from the end that the latter is nearer to. */
ColourData without(const RangeAxis& axis, const ColourData& present, const ColourData& picked)
{
    const ColourData hole = besides(axis, picked, present);
    ColourData rest = present;
    if (hole[1] + hole[2] < present[1] + present[2]) {
        rest[0] = std::clamp(hole[2], present[0], present[3]);
        rest[1] = std::clamp(hole[3], std::max(rest[0], present[1]), present[3]);
        rest[2] = std::max(rest[1], present[2]);
    } else {
        rest[3] = std::clamp(hole[1], present[0], present[3]);
        rest[2] = std::clamp(hole[0], present[0], std::min(rest[3], present[2]));
        rest[1] = std::min(rest[2], present[1]);
    }
    return rest;
}

/** What is left of a range when it is cut, from 0 to 1. */
double shareLeft(const ColourData& before, const ColourData& after)
{
    return lengthOf(before) > 0.0 ? lengthOf(after) / lengthOf(before) : 0.0;
}

} // namespace

ColEyeDropBase::ColourRange ColEyeDropBase::rangeOf(std::span<const Colour> colours)
{
    constexpr ColourData kAll{{0.0, 0.0, 1.0, 1.0}};
    if (colours.empty())
        return {kEveryHue, kAll, kAll};
    std::vector<HueSatLum> axes(colours.size());
    std::transform(colours.begin(), colours.end(), axes.begin(), HueSatLum::of);
    std::vector<double> saturations;
    std::vector<double> luminances;
    for (const HueSatLum& colour : axes) {
        saturations.push_back(colour.saturation);
        luminances.push_back(colour.luminance);
    }
    return {hueRangeOf(axes), onUnitAxis(std::move(saturations), kOfSaturation),
            onUnitAxis(std::move(luminances), kOfLuminance)};
}

ColEyeDropBase::ColourRange ColEyeDropBase::combined(const ColourRange& present, const ColourRange& picked,
                                                     PickMode mode)
{
    if (mode == PickMode::Replace)
        return picked;
    if (mode == PickMode::Add)
        return {united(hueAxis(), present.hue, picked.hue), united(unitAxis(), present.saturation, picked.saturation),
                united(unitAxis(), present.luminance, picked.luminance)};
    ColourRange rest = present;
    const ColourData hue = without(hueAxis(), present.hue, picked.hue);
    const ColourData saturation = without(unitAxis(), present.saturation, picked.saturation);
    const ColourData luminance = without(unitAxis(), present.luminance, picked.luminance);
    const double ofHue = shareLeft(present.hue, hue);
    const double ofSaturation = shareLeft(present.saturation, saturation);
    const double ofLuminance = shareLeft(present.luminance, luminance);
    if (ofHue >= ofSaturation && ofHue >= ofLuminance)
        rest.hue = hue;
    else if (ofSaturation >= ofLuminance)
        rest.saturation = saturation;
    else
        rest.luminance = luminance;
    return rest;
}

} // namespace oribund
