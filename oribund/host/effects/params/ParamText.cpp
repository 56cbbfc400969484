#include "oribund/host/effects/params/ParamText.h"

#include "oribund/host/base/Numeric.h"
#include "oribund/host/base/text/ColourText.h"
#include "oribund/host/effects/params/EffectValParam.h"
#include "oribund/host/effects/params/NumberDisplay.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/services/TextTable.h"

#include <cmath>

namespace oribund
{

namespace
{

// A value of each type

WString textOf(const EffectValParam<double>& param, double value)
{
    return NumberDisplay::of(param).format.textOf(value);
}

WString textOf(const EffectValParam<bool>&, bool value)
{
    return displayText(value ? TextIds::kYes : TextIds::kNo);
}

WString textOf(const EffectValParam<Angle>& param, const Angle& value)
{
    const WString degrees = NumberDisplay::of(param).format.textOf(value.withinTurn());
    const double turns = value.wholeTurns();
    return turns == 0.0 || !NumberDisplay::showsTurns(param)
               ? degrees
               : NumberDisplay::turnsFormat().textOf(turns) + L" " + degrees;
}

/** The numbers of a soft range, or the three of a colour offset. */
WString numbersText(const EffectValParam<ColourData>& param, const ColourData& value)
{
    const bool isOffset = !(param.displayFlags() & (ParamDisplay::kColourRange | ParamDisplay::kTonalRanges));
    WString text;
    for (std::size_t i = 0; i < (isOffset ? std::size_t{3} : ColourData::size()); ++i) {
        const double turns = NumberDisplay::isHueRange(param) ? std::floor(value[i] / kFullTurn) : 0.0;
        const WString number = NumberDisplay::of(param, i).format.textOf(value[i] - turns * kFullTurn);
        text = i > 0 ? text + L", " + number : number;
    }
    return text;
}

WString textOf(const EffectValParam<ColourData>& param, const ColourData& value)
{
    constexpr unsigned kSoftRange =
        ParamDisplay::kColourRange | ParamDisplay::kColourOffset | ParamDisplay::kTonalRanges;
    if (param.displayFlags() & kSoftRange)
        return numbersText(param, value);
    const WString text = hexText({value[0], value[1], value[2]});
    return value[3] < 1.0 ? text + L" " + NumberFormat::percentage(0).textOf(value[3]) : text;
}

WString textOf(const EffectValParam<Vector2d>& param, const Vector2d& value)
{
    return NumberDisplay::of(param, 0).format.textOf(value.x) + L", " +
           NumberDisplay::of(param, 1).format.textOf(value.y);
}

template <class P>
WString textOf(const EffectValParam<P>&, const P& value) requires isChoiceParam<P>
{
    const int selected = value.selectedIndex();
    return selected < 0 ? WString() : displayText(choiceLabels(value)[static_cast<std::size_t>(selected)]);
}

// Ranges

WString rangeText(const NumberFormat& format, double low, double high)
{
    const bool hasLow = std::isfinite(low);
    const bool hasHigh = std::isfinite(high);
    if (!hasLow && !hasHigh)
        return {};
    return displayText(UIString(hasLow && hasHigh ? TextIds::kFromTo
                                : hasLow          ? TextIds::kFrom
                                                  : TextIds::kUpTo)
                           .withPlaceholder(L"LOW", format.textOf(low))
                           .withPlaceholder(L"HIGH", format.textOf(high)));
}

/** A line of a tooltip; none for a range that is no limit. */
WString rangeLine(const WString& range, const WString& name = {})
{
    if (range.empty())
        return {};
    const UIString text(name.empty() ? TextIds::kRange : TextIds::kRangeOf);
    return L"\n" + displayText(text.withPlaceholder(L"NAME", name).withPlaceholder(L"RANGE", range));
}

template <class P>
WString rangeLines(const EffectValParam<P>&)
{
    return {};
}

WString rangeLines(const EffectValParam<double>& param)
{
    return rangeLine(rangeText(NumberDisplay::of(param).format, param.getMin(), param.getMax()));
}

WString rangeLines(const EffectValParam<Angle>& param)
{
    return rangeLine(rangeText(NumberDisplay::of(param).format, param.getMin().degrees, param.getMax().degrees));
}

WString rangeLines(const EffectValParam<Vector2d>& param)
{
    const auto line = [&param](std::size_t i, const wchar_t* name) {
        return rangeLine(rangeText(NumberDisplay::of(param, i).format, param.getMin()[i], param.getMax()[i]), name);
    };
    return line(0, L"X") + line(1, L"Y");
}

/** Calls `function(param, value)` with both as what they are, unless they are of different types. */
template <class Function>
WString withTypes(const EffectValParamBase& param, const ParamValue& value, Function function)
{
    return std::visit(
        [&]<class P>(const P& typed) {
            const auto* const own = dynamic_cast<const EffectValParam<P>*>(&param);
            return own ? function(*own, typed) : WString();
        },
        value);
}

} // namespace

WString rowNameOf(const EffectValParamBase& param)
{
    const WString name = displayText(param.description());
    return NumberDisplay::isShownInEntry(param.unitText()) ? name : name + L" (" + param.unitText() + L")";
}

WString valueText(const EffectValParamBase& param, const ParamValue& value)
{
    return withTypes(param, value, [](const auto& own, const auto& typed) { return textOf(own, typed); });
}

WString paramTooltip(const EffectValParamBase& param)
{
    const ParamValue standard = param.defaultValue();
    const WString text = valueText(param, standard);
    const WString defaultLine =
        text.empty() ? WString() : L"\n" + displayText(UIString(TextIds::kDefault).withPlaceholder(L"VALUE", text));
    const WString& help = param.help();
    return rowNameOf(param) + (help.empty() ? WString() : L"\n" + help) + defaultLine +
           withTypes(param, standard, [](const auto& own, const auto&) { return rangeLines(own); });
}

WString keyframesText(int count)
{
    if (count == 1)
        return displayText(TextIds::kOneKeyframe);
    return displayText(UIString(TextIds::kManyKeyframes).withPlaceholder(L"COUNT", reinterpretValType<WString>(count)));
}

} // namespace oribund
