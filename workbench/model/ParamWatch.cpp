#include "workbench/model/ParamWatch.h"

#include <utility>

namespace workbench
{

using oribund::BatchReason;
using oribund::EffectChangeCode;

namespace
{
EffectChangeCode codeOf(BatchReason reason)
{
    switch (reason) {
    case BatchReason::None:
    case BatchReason::SetValue:
        return EffectChangeCode::ParamValueChanged;
    case BatchReason::Move:
        return EffectChangeCode::KeyframesMoved;
    case BatchReason::Reshape:
        return EffectChangeCode::CurveShapeChanged;
    default:
        return EffectChangeCode::KeyframesChanged;
    }
}

template <class P>
class WatchOf final : public ParamWatch
{
public:
    WatchOf(oribund::EffectValParam<P>& param, Told told)
        : told_(std::move(told))
        , constant_(this, &WatchOf::onConstant)
        , graph_(this, &WatchOf::onGraph)
        , fnType_(this, &WatchOf::onFnType)
    {
        constant_.attach(param.constantServer().notifier());
        if (param.graph())
            graph_.attach(param.graph()->changes());
        fnType_.attach(param.fnTypeServer().notifier());
    }

private:
    template <class Event>
    int tell(const Event& event, EffectChangeCode code)
    {
        if (event.kind == oribund::ValEventKind::Changed)
            told_(code);
        return 0;
    }

    int onConstant(const oribund::ValServerEvent<P>& event) { return tell(event, EffectChangeCode::ParamValueChanged); }

    int onGraph(const oribund::Graph1dBase::Event& event) { return tell(event, codeOf(event.value->reason)); }

    int onFnType(const oribund::ValServerEvent<oribund::EffectValParamFnType>& event)
    {
        return tell(event, EffectChangeCode::FunctionTypeChanged);
    }

    Told told_;
    oribund::MethodCallback<WatchOf, oribund::ValServerEvent<P>> constant_;
    oribund::MethodCallback<WatchOf, oribund::Graph1dBase::Event> graph_;
    oribund::MethodCallback<WatchOf, oribund::ValServerEvent<oribund::EffectValParamFnType>> fnType_;
};
} // namespace

std::unique_ptr<ParamWatch> ParamWatch::make(oribund::EffectValParamBase& param, Told told)
{
    std::unique_ptr<ParamWatch> watch;
    oribund::visitParam(param, [&]<class P>(oribund::EffectValParam<P>& typed) {
        watch = std::make_unique<WatchOf<P>>(typed, std::move(told));
    });
    return watch;
}

} // namespace workbench
