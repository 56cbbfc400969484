#include "oribund/colour/RangeGradients.h"

#include "oribund/host/base/HueSatLum.h"

#include <algorithm>
#include <cmath>

namespace oribund::RangeGradients
{

namespace
{

constexpr double kTurn = 360.0;

/** A colour for each column, from its place between 0 and 1. */
template <class ColourAt>
std::vector<Colour> columnsOf(std::size_t count, ColourAt colourAt)
{
    std::vector<Colour> columns(count);
    const double last = static_cast<double>(std::max<std::size_t>(count, 2) - 1);
    for (std::size_t i = 0; i < count; ++i)
        columns[i] = colourAt(static_cast<double>(i) / last);
    return columns;
}

} // namespace

double withinTurn(double hue)
{
    const double rest = std::fmod(hue, kTurn);
    return rest < 0.0 ? rest + kTurn : rest;
}

std::vector<Colour> hues(std::size_t columns, double middle, double span)
{
    std::vector<Colour> colours(columns);
    const double first = withinTurn(middle - span / 2.0);
    const double perColumn = span / static_cast<double>(std::max<std::size_t>(columns, 1));
    for (std::size_t i = 0; i < columns; ++i) {
        const double hue = first + perColumn * static_cast<double>(i);
        colours[i] = colourOfHSV(hue < kTurn ? hue : withinTurn(hue), 1.0, 1.0);
    }
    return colours;
}

std::vector<Colour> saturations(std::size_t columns, double hue)
{
    constexpr double kGreyValue = 0.5;
    const double first = withinTurn(hue);
    // Brighter with more colour, as grey looks brighter than a colour of the same value.
    return columnsOf(columns, [first](double saturation) {
        return colourOfHSV(first, saturation, kGreyValue + (1.0 - kGreyValue) * saturation);
    });
}

std::vector<Colour> luminances(std::size_t columns)
{
    return columnsOf(columns, [](double luminance) { return Colour{luminance, luminance, luminance}; });
}

} // namespace oribund::RangeGradients
