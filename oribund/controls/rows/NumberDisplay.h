#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/NumRange.h"
#include "oribund/host/toolkit/entries/NumberFormat.h"

namespace oribund
{

class EffectValParamBase;

/** How a row shows a number and lets it be changed. The rules of all rows stand here. */
struct ORIBUND_API NumberDisplay {
    static constexpr int kDecimalsFromRange = -1;

    /**
     * For a number within these limits, which may be infinite. `standard` is its default, `unit` its unit. In per cent
     * it is shown times 100. The decimals are those that the entry shows, or kDecimalsFromRange.
     */
    NumberDisplay(double minimum, double maximum, double standard, const WString& unit, bool inPercent,
                  int decimals = kDecimalsFromRange);

    /** Where the slider ends: at the limits, or, where there are none, at a round distance. Always finite. */
    NumRange<double> slider;
    /** What an arrow key adds to the number: a round number, about a hundredth of the slider. */
    double step = 1.0;
    NumberFormat format;

    /**
     * How many decimals a number needs whose range is `span`: so many that a thousandth of the range is seen, as the
     * pixels of a slider are not more.
     */
    static int decimalsFor(double span);

    /** Whether the unit stands behind the number in the entry; longer ones stand behind the name. */
    static bool isShownInEntry(const WString& unit);
};

/** What a row calls a parameter: its description, with the unit where that is not in the entry. */
ORIBUND_API WString rowNameOf(const EffectValParamBase& param);

} // namespace oribund
