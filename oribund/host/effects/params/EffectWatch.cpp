#include "oribund/host/effects/params/EffectWatch.h"

#include "oribund/host/effects/EffectInstance.h"
#include "oribund/host/effects/params/EffectValParam.h"
#include "oribund/host/effects/params/ParamVisitor.h"
#include "oribund/host/notify/MethodCallback.h"

#include <utility>

namespace oribund
{

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
} // namespace

class EffectWatch::ParamWatch
{
public:
    virtual ~ParamWatch() = default;
};

template <class P>
class EffectWatch::WatchOf final : public ParamWatch
{
public:
    WatchOf(const IdStamp& effect, EffectValParam<P>& param, Told told)
        : told_(std::move(told))
        , constant_(this, &WatchOf::onConstant)
        , graph_(this, &WatchOf::onGraph)
        , fnType_(this, &WatchOf::onFnType)
    {
        change_.effect = effect;
        change_.param = param.id();
        constant_.attach(param.constantServer().notifier());
        if (param.graph())
            graph_.attach(param.graph()->changes());
        fnType_.attach(param.fnTypeServer().notifier());
    }

private:
    template <class Event>
    int tell(const Event& event, EffectChangeCode code)
    {
        if (event.kind != ValEventKind::Changed)
            return 0;
        EffectChangeDescription change = change_;
        change.code = code;
        // A copy: what hears of it may end this watch.
        const Told told = told_;
        told(change);
        return 0;
    }

    int onConstant(const ValServerEvent<P>& event) { return tell(event, EffectChangeCode::ParamValueChanged); }

    int onGraph(const Graph1dBase::Event& event) { return tell(event, codeOf(event.value->reason)); }

    int onFnType(const ValServerEvent<EffectValParamFnType>& event)
    {
        return tell(event, EffectChangeCode::FunctionTypeChanged);
    }

    EffectChangeDescription change_;
    Told told_;
    MethodCallback<WatchOf, ValServerEvent<P>> constant_;
    MethodCallback<WatchOf, Graph1dBase::Event> graph_;
    MethodCallback<WatchOf, ValServerEvent<EffectValParamFnType>> fnType_;
};

EffectWatch::EffectWatch(const EffectInstance& effect, Told told)
{
    for (const auto& param : effect.params()) {
        visitParam(*param, [&]<class P>(EffectValParam<P>& typed) {
            watches_.push_back(std::make_unique<WatchOf<P>>(effect.id(), typed, told));
        });
    }
}

EffectWatch::~EffectWatch() = default;
EffectWatch::EffectWatch(EffectWatch&&) noexcept = default;
EffectWatch& EffectWatch::operator=(EffectWatch&&) noexcept = default;

} // namespace oribund
