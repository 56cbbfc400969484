#include "oribund/host/effects/keyframes/KeyframeRemoval.h"

#include "oribund/host/effects/keyframes/KeyframeSpan.h"

#include <utility>

namespace oribund
{

KeyframeRemoval::KeyframeRemoval() = default;
KeyframeRemoval::~KeyframeRemoval() = default;

void KeyframeRemoval::add(const EffectInstance& effect, const IdStamp& id, std::span<const double> times, double now)
{
    const Kt::Ptr<EffectValParamBase> param = effect.findParam(id);
    const Graph1dBase* const graph = animatedGraph(param.get());
    if (!graph || !effect.canEditParam(*param))
        return;
    Part part{param, {}, now};
    for (const double time : times) {
        if (isWithinEffect(time) && graph->indexAt(time) >= 0)
            part.times.push_back(time);
    }
    count_ += static_cast<int>(part.times.size());
    if (!part.times.empty())
        parts_.push_back(std::move(part));
}

void KeyframeRemoval::apply() const
{
    for (const auto& [param, times, now] : parts_) {
        Graph1dBase* const graph = animatedGraph(param.get());
        if (!graph)
            continue;
        if (static_cast<int>(times.size()) == graph->size()) {
            param->setFunctionType(EffectValParamFnType::Constant, now);
            continue;
        }
        const GraphBatch batch(*graph, BatchReason::Remove, BatchReason::Remove, ChangeKind::Single);
        for (const double time : times)
            graph->removeKeyframe(graph->indexAt(time));
    }
}

} // namespace oribund
