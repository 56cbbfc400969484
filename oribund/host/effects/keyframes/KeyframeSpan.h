#pragma once

#include "oribund/host/base/Numeric.h"
#include "oribund/host/effects/EffectInstance.h"
#include "oribund/host/effects/params/EffectValParamBase.h"

namespace oribund
{

/** Whether a keyframe of that time lies within its effect. The others shape the curve, but nobody gets to see them. */
inline bool isWithinEffect(double fxTime) noexcept
{
    return fxTime >= -kValueTolerance && fxTime <= 1.0 + kValueTolerance;
}

/** The first keyframe that is not before `fxTime`; the size of the graph when there is none. */
inline int firstKeyframeFrom(const Graph1dBase& graph, double fxTime) noexcept
{
    const int lower = graph.lowerIndex(fxTime);
    return lower >= 0 && graph.timeAt(lower) == fxTime ? lower : lower + 1;
}

/** Indices of the keyframes that lie within the effect, `end` excluded. */
struct KeyframeSpan {
    explicit KeyframeSpan(const Graph1dBase& graph) noexcept
        : first(firstKeyframeFrom(graph, -kValueTolerance))
        , end(graph.lowerIndex(1.0 + kValueTolerance) + 1)
    {
    }

    int size() const noexcept { return end - first; }

    int first;
    int end;
};

/** The graph of a parameter that is animated; null for any other, and for none. */
inline Graph1dBase* animatedGraph(EffectValParamBase* param) noexcept
{
    return param && param->functionType() == EffectValParamFnType::Keyframed ? param->graph() : nullptr;
}

/** Calls `visit(param, graph)` for each parameter that is animated. */
template <class Visit>
void forEachAnimated(const EffectInstance& effect, Visit visit)
{
    for (const auto& param : effect.params()) {
        if (Graph1dBase* const graph = animatedGraph(param.get()))
            visit(*param, *graph);
    }
}

} // namespace oribund
