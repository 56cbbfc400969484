#include "oribund/controls/rows/ParamRow.h"

#include "oribund/controls/binding/EffectValParamAdaptor.h"
#include "oribund/controls/rows/ChoiceRow.h"
#include "oribund/controls/rows/KeyframeAngleCtrls.h"
#include "oribund/controls/rows/KeyframeColourCtrls.h"
#include "oribund/controls/rows/KeyframeFloatCtrlsBase.h"
#include "oribund/controls/rows/PointRow.h"
#include "oribund/controls/rows/SwitchRow.h"
#include "oribund/host/effects/params/ParamVisitor.h"

namespace oribund
{

namespace
{

class RowMaker final : public ParamVisitor
{
public:
    RowMaker(const FXViewHandle& handle, const ParamRowArgs& args)
        : handle_(handle)
        , args_(args)
    {
    }

    void visit(EffectValParam<double>& param) override
    {
        row = std::make_unique<KeyframeFloatCtrlsBase>(handle_, Kt::Ptr(&param), args_.width, args_.labelWidth, 0,
                                                       args_.canvas);
    }

    void visit(EffectValParam<Angle>& param) override
    {
        row =
            std::make_unique<KeyframeAngleCtrls>(handle_, Kt::Ptr(&param), args_.width, args_.labelWidth, args_.canvas);
    }

    void visit(EffectValParam<ColourData>& param) override
    {
        // Where every colour is as opaque as any other there is no opacity to choose.
        const bool hasOpacity = param.getMin().values[3] < param.getMax().values[3];
        auto colours = std::make_unique<KeyframeColourCtrls>(
            handle_, param.id(), args_.width, args_.labelWidth, 0, args_.canvas,
            hasOpacity ? KeyframeColourCtrls::Opts::eOpacity : KeyframeColourCtrls::Opts::eNone);
        colours->setParam(&param);
        row = std::move(colours);
    }

    void visit(EffectValParam<Vector2d>& param) override { row = std::make_unique<PointRow>(handle_, param, args_); }

    void visit(EffectValParam<bool>& param) override { row = std::make_unique<SwitchRow>(handle_, param, args_); }

    void visit(EffectValParam<ListParam<int>>& param) override { makeChoice(param); }

    void visit(EffectValParam<ListParam<String>>& param) override { makeChoice(param); }

    void visit(EffectValParam<VideoInputParam>& param) override { makeChoice(param); }

    std::unique_ptr<KeyframeCtrlsBase> row;

private:
    template <class P>
    void makeChoice(const EffectValParam<P>& param)
    {
        using Adaptor = EffectValParamAdaptor<unsigned, EffectValParamAccessor<P>>;
        row = std::make_unique<ChoiceRow>(handle_, param, args_,
                                          Kt::makePtr<Adaptor>(handle_, EffectValParamAccessor<P>(param)));
    }

    FXViewHandle handle_;
    ParamRowArgs args_;
};

} // namespace

std::unique_ptr<KeyframeCtrlsBase> makeParamRow(const FXViewHandle& handle, EffectValParamBase& param,
                                                const ParamRowArgs& args)
{
    RowMaker maker(handle, args);
    param.accept(maker);
    return std::move(maker.row);
}

} // namespace oribund
