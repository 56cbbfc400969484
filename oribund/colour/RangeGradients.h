#pragma once

#include "oribund/host/base/Colour.h"
#include "oribund/host/base/Export.h"

#include <cstddef>
#include <vector>

namespace oribund
{

/** The colours of a strip of so many columns, from left to right. */
namespace RangeGradients
{

/** A part of the hue circle of `span` degrees about a middle hue, in full colour. */
ORIBUND_API std::vector<Colour> hues(std::size_t columns, double middle, double span);

/** From grey to full colour, of a hue. */
ORIBUND_API std::vector<Colour> saturations(std::size_t columns, double hue);

/** From black to white. */
ORIBUND_API std::vector<Colour> luminances(std::size_t columns);

/** Any hue in degrees brought into the first turn. */
ORIBUND_API double withinTurn(double hue);

} // namespace RangeGradients

} // namespace oribund
