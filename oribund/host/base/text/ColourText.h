#pragma once

#include "oribund/host/base/Colour.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/base/LightweightString.h"

#include <optional>
#include <string_view>

namespace oribund
{

/** "#rrggbb"; the opacity is left out. */
ORIBUND_API WString hexText(const Colour& colour);

/** The colour of "#rrggbb" or "#rgb", either without the '#'; nothing for any other text. */
ORIBUND_API std::optional<Colour> parseHexColour(std::wstring_view text);

} // namespace oribund
