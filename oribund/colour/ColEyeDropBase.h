#pragma once

#include "oribund/colour/RangeAxis.h"
#include "oribund/host/base/Colour.h"
#include "oribund/host/base/Export.h"

#include <span>

namespace oribund
{

/** What is made of colours that a user has picked: soft ranges that hold them. Pure rules. */
class ORIBUND_API ColEyeDropBase
{
public:
    /** A soft range on each axis, as HueSatLum measures them. */
    struct ColourRange {
        ColourData hue;        ///< degrees
        ColourData saturation; ///< 0 to 1
        ColourData luminance;  ///< 0 to 1

        bool operator==(const ColourRange&) const = default;
    };

    /** What becomes of the ranges that are there. */
    enum class PickMode {
        Replace,
        Add,    ///< they are widened, so that they hold the new ones too
        Remove, ///< the one that loses least by it is cut, so that the new ones are left out
    };

    static RangeAxis hueAxis() { return {180.0, 360.0}; }

    static RangeAxis unitAxis() { return {1.0, 0.0}; }

    /**
     * Fully selects the colours but for a few that lie far off, with soft edges about them. Greys have no hue: where
     * most are grey, every hue is selected. All is selected where there are no colours.
     */
    static ColourRange rangeOf(std::span<const Colour> colours);

    static ColourRange combined(const ColourRange& present, const ColourRange& picked, PickMode mode);
};

} // namespace oribund
