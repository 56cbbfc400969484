#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/NumRange.h"
#include "oribund/host/base/text/NumberFormat.h"

#include <cstddef>

namespace oribund
{

struct Angle;
struct ColourData;
struct Vector2d;
template <class P>
class EffectValParam;

/** What the two numbers of a point stand for. */
enum class PointUnit {
    FrameParts,  ///< a place: (0, 0) is the top left corner of the frame, (1, 1) the bottom right one
    FramePixels, ///< a place: pixels of the frame from its centre, to the right and down
    None,        ///< no place: two numbers that are set together
};

/** By its unit: none means parts of the frame, "px" pixels, another one no place; nor is a plain number one. */
ORIBUND_API PointUnit pointUnitOf(const EffectValParam<Vector2d>& param);

/** How a row shows a number and lets it be changed. The rules of all rows stand here. */
struct ORIBUND_API NumberDisplay {
    static constexpr int kDecimalsFromRange = -1;

    /**
     * For a number within these limits, which may be infinite. `standard` is its default, `unit` its unit. In per cent
     * it is shown times 100. The decimals are those that the entry shows, or kDecimalsFromRange.
     */
    NumberDisplay(double minimum, double maximum, double standard, const WString& unit, bool inPercent,
                  int decimals = kDecimalsFromRange);

    // For a parameter, or one coordinate of it.
    static NumberDisplay of(const EffectValParam<double>& param, int decimals = kDecimalsFromRange);
    static NumberDisplay of(const EffectValParam<Angle>& param);
    static NumberDisplay of(const EffectValParam<Vector2d>& param, std::size_t coordinate);

    /** For one number of a soft range or a colour offset. */
    static NumberDisplay of(const EffectValParam<ColourData>& param, std::size_t component);

    /** Whether a soft range is one of hues, which are degrees on a circle: their limits are beyond those of all others.
     */
    static bool isHueRange(const EffectValParam<ColourData>& param);

    /** Whether the number runs from 0 or -1 to 1. */
    static bool isNormalised(const EffectValParam<double>& param);

    /** Whether it is shown in per cent: a normalised one unless its display flags say otherwise. */
    static bool isPercentage(const EffectValParam<double>& param);

    /** Whether an angle may have whole turns, which are a number of their own beside the degrees. */
    static bool showsTurns(const EffectValParam<Angle>& param);

    static NumberFormat turnsFormat() { return {0, 1.0, L"\u00d7"}; }

    /** Where the slider ends: at the limits, or, where there are none, at a round distance. Always finite. */
    NumRange<double> slider;
    /** What an arrow key adds to the number: a round number, about a hundredth of the slider. */
    double step = 1.0;
    NumberFormat format;

    /** Whether the unit stands behind the number in the entry; longer ones stand behind the name. */
    static bool isShownInEntry(const WString& unit);
};

} // namespace oribund
