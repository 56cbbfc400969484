#include "oribund/host/effects/params/NumberDisplay.h"

#include "oribund/host/base/Numeric.h"
#include "oribund/host/effects/params/EffectValParam.h"

#include <algorithm>
#include <cmath>

namespace oribund
{

namespace
{

/** Beyond it a limit is none that a slider could show. */
constexpr double kFarthestLimit = 1e6;
constexpr double kSmallestSpan = 1e-12;
constexpr int kMostDecimals = 15;
constexpr int kPercentDecimals = 1;
constexpr std::size_t kLongestUnitInEntry = 2;

/** What is laid on a frame may stand as far outside as the frame is large. */
constexpr NumRange<double> kAroundFrame{-1.0, 2.0};
/** A thousandth of the frame, and of its pixels the nearest whole number to that. */
constexpr double kFrameStep = 0.001;
constexpr double kPixelStep = 1.0;
constexpr int kFrameDecimals = 4; // a tenth of a step is seen

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

/** So many that a thousandth of the range is seen, as the pixels of a slider are not more. */
int decimalsFor(double span)
{
    const double places = 3.0 - std::log10(span);
    return std::clamp(static_cast<int>(std::ceil(places - 1e-9)), 0, kMostDecimals);
}

/** The same of small numbers, whose first decimals are all zeros. 0 where decimals do. */
int significantFor(const NumRange<double>& range, int decimals)
{
    constexpr int kMostShown = 6;
    const double largest = std::max(std::abs(range.start()), std::abs(range.end()));
    if (decimals <= kMostShown || !(largest > 0.0) || largest >= 1e-3)
        return 0;
    return std::clamp(decimals + static_cast<int>(std::ceil(std::log10(largest) - 1e-9)), 3, kMostDecimals);
}

/** As far as a slider for the degrees goes: the whole of a small range, else one turn, to before it is full. */
NumRange<double> degreesWithin(double low, double high)
{
    constexpr double kLastDegree = kFullTurn - 1.0;
    if (high - low <= 2.0 * kFullTurn)
        return {low, high};
    return {low < 0.0 ? -kLastDegree : 0.0, high > 0.0 ? kLastDegree : 0.0};
}

} // namespace

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
        format.significant = significantFor(slider, format.decimals);
        // A degree sign belongs to the number, a word stands beside it.
        if (!unit.empty() && isShownInEntry(unit))
            format.unit = unit == L"\u00b0" ? unit : L" " + unit;
    }
    if (decimals != kDecimalsFromRange) {
        format.decimals = decimals;
        format.significant = 0;
    }
}

NumberDisplay NumberDisplay::of(const EffectValParam<double>& param, int decimals)
{
    return {param.getMin(), param.getMax(), param.getDefault(), param.unitText(), isPercentage(param), decimals};
}

NumberDisplay NumberDisplay::of(const EffectValParam<Angle>& param)
{
    const NumRange<double> range = degreesWithin(param.getMin().degrees, param.getMax().degrees);
    NumberDisplay display(range.start(), range.end(), param.getDefault().degrees, L"\u00b0", false);
    display.step = 1.0;
    return display;
}

NumberDisplay NumberDisplay::of(const EffectValParam<Vector2d>& param, std::size_t coordinate)
{
    const PointUnit unit = pointUnitOf(param);
    const bool inParts = unit == PointUnit::FrameParts;
    double low = param.getMin()[coordinate];
    double high = param.getMax()[coordinate];
    if (inParts && low < -kFarthestLimit)
        low = std::min(kAroundFrame.start(), high);
    if (inParts && high > kFarthestLimit)
        high = std::max(kAroundFrame.end(), low);
    NumberDisplay display(low, high, param.getDefault()[coordinate], param.unitText(), false,
                          inParts ? kFrameDecimals : kDecimalsFromRange);
    if (unit != PointUnit::None)
        display.step = inParts ? kFrameStep : kPixelStep;
    return display;
}

PointUnit pointUnitOf(const EffectValParam<Vector2d>& param)
{
    if (param.displayFlags() & ParamDisplay::kPlainNumber)
        return PointUnit::None;
    return param.unitText().empty()    ? PointUnit::FrameParts
           : param.unitText() == L"px" ? PointUnit::FramePixels
                                       : PointUnit::None;
}

NumberDisplay NumberDisplay::of(const EffectValParam<ColourData>& param, std::size_t component)
{
    const bool inPercent = !(param.displayFlags() & ParamDisplay::kColourOffset) && param.getMax()[component] <= 1.0;
    NumberDisplay display(param.getMin()[component], param.getMax()[component], param.getDefault()[component],
                          param.unitText(), inPercent);
    if (isHueRange(param)) {
        display.step = 1.0;
        display.format = {1, 1.0, L"\u00b0"};
    }
    return display;
}

bool NumberDisplay::isHueRange(const EffectValParam<ColourData>& param)
{
    return (param.displayFlags() & ParamDisplay::kColourRange) && param.getMax()[0] > 1.0;
}

bool NumberDisplay::isNormalised(const EffectValParam<double>& param)
{
    return valEqualsVal(param.getMax(), 1.0) &&
           (valEqualsVal(param.getMin(), 0.0) || valEqualsVal(param.getMin(), -1.0));
}

bool NumberDisplay::isPercentage(const EffectValParam<double>& param)
{
    return isNormalised(param) ? !(param.displayFlags() & ParamDisplay::kPlainNumber)
                               : (param.displayFlags() & ParamDisplay::kPercentage) != 0;
}

bool NumberDisplay::showsTurns(const EffectValParam<Angle>& param)
{
    return param.getMax().degrees - param.getMin().degrees > kFullTurn;
}

} // namespace oribund
