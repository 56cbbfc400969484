#include "oribund/controls/rows/ParamTooltip.h"

#include "oribund/controls/rows/KeyframeFloatCtrlsBase.h"
#include "oribund/controls/rows/NumberDisplay.h"
#include "oribund/host/effects/params/EffectValParam.h"
#include "oribund/host/effects/params/ParamVisitor.h"
#include "oribund/host/services/TextTable.h"

#include <cmath>

namespace oribund
{

namespace
{

/** One line of a tooltip; none for a text that is empty. */
WString line(const wchar_t* what, const WString& text)
{
    return text.empty() ? WString() : L"\n" + WString(what) + text;
}

WString rangeText(const NumberFormat& format, double low, double high)
{
    if (std::isfinite(low) && std::isfinite(high))
        return format.textOf(low) + L" to " + format.textOf(high);
    if (std::isfinite(low))
        return L"from " + format.textOf(low);
    return std::isfinite(high) ? L"up to " + format.textOf(high) : WString();
}

WString textOf(const ColourData& colour)
{
    const NumberFormat format = NumberFormat::percentage(0);
    return L"red " + format.textOf(colour[0]) + L", green " + format.textOf(colour[1]) + L", blue " +
           format.textOf(colour[2]);
}

/** The lines that tell of the default and the range. */
struct Describer final : ParamVisitor {
    void visit(EffectValParam<double>& param) override
    {
        const NumberDisplay display = KeyframeFloatCtrlsBase::displayOf(param);
        lines = line(L"Default: ", display.format.textOf(param.getDefault())) +
                line(L"Range: ", rangeText(display.format, param.getMin(), param.getMax()));
    }

    void visit(EffectValParam<Angle>& param) override
    {
        const NumberFormat format{1, 1.0, L"\u00b0"};
        lines = line(L"Default: ", format.textOf(param.getDefault().degrees)) +
                line(L"Range: ", rangeText(format, param.getMin().degrees, param.getMax().degrees));
    }

    void visit(EffectValParam<Vector2d>& param) override
    {
        const NumberFormat format;
        const Vector2d low = param.getMin();
        const Vector2d high = param.getMax();
        lines = line(L"Default: ", format.textOf(param.getDefault().x) + L", " + format.textOf(param.getDefault().y)) +
                line(L"Range of X: ", rangeText(format, low.x, high.x)) +
                line(L"Range of Y: ", rangeText(format, low.y, high.y));
    }

    void visit(EffectValParam<ColourData>& param) override { lines = line(L"Default: ", textOf(param.getDefault())); }

    void visit(EffectValParam<bool>& param) override
    {
        lines = line(L"Default: ", param.getDefault() ? L"on" : L"off");
    }

    void visit(EffectValParam<ListParam<int>>& param) override { describeList(param.getDefault()); }

    void visit(EffectValParam<ListParam<String>>& param) override { describeList(param.getDefault()); }

    void visit(EffectValParam<VideoInputParam>&) override {}

    template <class X>
    void describeList(const ListParam<X>& list)
    {
        if (const auto* item = list.selectedItem())
            lines = line(L"Default: ", displayText(item->label));
    }

    WString lines;
};

} // namespace

WString paramTooltip(const EffectValParamBase& param)
{
    Describer describer;
    const_cast<EffectValParamBase&>(param).accept(describer); // reads only
    return rowNameOf(param) + describer.lines;
}

} // namespace oribund
