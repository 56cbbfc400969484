#pragma once

#include "oribund/controls/binding/ParamFinder.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/base/Kt.h"
#include "oribund/host/effects/params/EffectValParam.h"
#include "oribund/host/notify/ChangeKind.h"

#include <optional>

namespace oribund
{

/**
 * The one way by which a value is written to a parameter of type `P`, and the usual way by which it is read.
 *
 * An edit of an animated parameter lands on a keyframe: on the one that is exactly at the time, else on a new one, made
 * within one batch. An edit of a parameter that is not animated replaces its constant; it never animates it. Times are
 * effect time. User-interface thread only.
 */
template <class P>
class ORIBUND_API EffectValParamAccessor
{
public:
    using Param = P;
    using Value = P;

    explicit EffectValParamAccessor(const EffectValParam<P>& param)
        : finder_(param.id())
    {
    }

    const IdStamp& paramId() const { return finder_.paramId(); }

    /** Empty when the effect has no such parameter (any more). */
    Kt::Ptr<EffectValParam<P>> getParam(const Kt::Ptr<EffectInstance>& effect) { return Kt::Ptr(find(effect)); }

    /** Nothing when the effect has no such parameter. */
    std::optional<P> getValue(const Kt::Ptr<EffectInstance>& effect, double fxTime);

    /** False, and nothing written, when there is no such parameter or it does not take the value. */
    bool setValue(const Kt::Ptr<EffectInstance>& effect, const P& value, double fxTime, ChangeKind kind);

    /**
     * Adds a keyframe to the parameter's graph, from which a constant parameter takes its value only once it is
     * animated. Its index; -1 when one is exactly there, or there is no graph.
     */
    int addKeyframe(const Kt::Ptr<EffectInstance>& effect, const P& value, double fxTime, ChangeKind kind);

private:
    EffectValParam<P>* find(const Kt::Ptr<EffectInstance>& effect);
    static int addKeyframeTo(EffectValParam<P>& param, const P& value, double fxTime, ChangeKind kind);

    ParamFinder finder_;
};

ORIBUND_FOR_PARAM_TYPES(ORIBUND_DECLARE_FOR_TYPE, EffectValParamAccessor)

} // namespace oribund
