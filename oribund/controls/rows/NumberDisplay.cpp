#include "oribund/controls/rows/NumberDisplay.h"

#include "oribund/host/effects/params/EffectValParamBase.h"
#include "oribund/host/services/TextTable.h"

#include <algorithm>
#include <cmath>

namespace oribund
{

namespace
{

/** Beyond it a limit is none that a slider could show. */
constexpr double kFarthestLimit = 1e6;
constexpr double kSmallestSpan = 1e-9;
constexpr int kMostDecimals = 6;
constexpr int kPercentDecimals = 1;
constexpr std::size_t kLongestUnitInEntry = 2;

/** The power of ten that is next below, or equal. */
double powerBelow(double value)
{
    return std::pow(10.0, std::floor(std::log10(value) + 1e-9));
}

/** How far a slider goes where the parameter does not say. */
double reachAround(double standard)
{
    constexpr double kUsualReach = 100.0;
    const double size = std::min(std::abs(standard), kFarthestLimit);
    return size < kUsualReach / 10.0 ? kUsualReach : 100.0 * powerBelow(size);
}

NumRange<double> sliderWithin(double minimum, double maximum, double standard)
{
    const bool hasLow = minimum > -kFarthestLimit;
    const bool hasHigh = maximum < kFarthestLimit;
    if (hasLow && hasHigh)
        return {minimum, maximum};
    const double from = hasLow ? minimum : hasHigh ? maximum : 0.0;
    const double reach = reachAround(std::max(std::abs(standard), std::abs(from)));
    return {hasLow ? minimum : from - reach, hasHigh ? maximum : from + reach};
}

} // namespace

int NumberDisplay::decimalsFor(double span)
{
    const double places = 3.0 - std::log10(std::max(span, kSmallestSpan));
    return std::clamp(static_cast<int>(std::ceil(places - 1e-9)), 0, kMostDecimals);
}

bool NumberDisplay::isShownInEntry(const WString& unit)
{
    return unit.size() <= kLongestUnitInEntry;
}

NumberDisplay::NumberDisplay(double minimum, double maximum, double standard, const WString& unit, bool inPercent,
                             int decimals)
    : slider(sliderWithin(minimum, maximum, standard))
{
    const double span = std::max(slider.length(), kSmallestSpan);
    step = powerBelow(span / 50.0);
    if (inPercent) {
        format = NumberFormat::percentage(kPercentDecimals);
    } else {
        format.decimals = decimalsFor(span);
        // A degree sign belongs to the number, a word stands beside it.
        if (!unit.empty() && isShownInEntry(unit))
            format.unit = unit == L"\u00b0" ? unit : L" " + unit;
    }
    if (decimals != kDecimalsFromRange)
        format.decimals = decimals;
}

WString rowNameOf(const EffectValParamBase& param)
{
    const WString name = displayText(param.description());
    return NumberDisplay::isShownInEntry(param.unitText()) ? name : name + L" (" + param.unitText() + L")";
}

} // namespace oribund
