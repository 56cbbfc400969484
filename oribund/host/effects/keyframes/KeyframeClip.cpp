#include "oribund/host/effects/keyframes/KeyframeClip.h"

#include "oribund/host/base/FXTimeMapping.h"
#include "oribund/host/effects/curves/BezierCurve.h"
#include "oribund/host/effects/keyframes/KeyframeSpan.h"

#include <utility>

namespace oribund
{

void KeyframeClip::add(const EffectInstance& effect, const NumRange<double>& region, double origin,
                       const IdStamp& paramId, std::span<const double> times)
{
    const Kt::Ptr<EffectValParamBase> param = effect.findParam(paramId);
    const Graph1dBase* const graph = animatedGraph(param.get());
    if (!graph)
        return;
    Part part{effect.id(), effect.tagTypeId(), paramId, param->name(), param->constantValue().index(), {}};
    part.channels.resize(static_cast<std::size_t>(graph->channelCount()));
    for (const double time : times) {
        const int index = graph->indexAt(time);
        for (std::size_t i = 0; index >= 0 && i < part.channels.size(); ++i) {
            Keyframe key = graph->channel(static_cast<int>(i)).keyframe(index);
            key.time = toEditTime(region, FXTime{key.time}) - origin;
            key.in.dt *= region.length();
            key.out.dt *= region.length();
            part.channels[i].push_back(key);
        }
    }
    if (!part.channels.front().empty())
        parts_.push_back(std::move(part));
}

int KeyframeClip::size() const
{
    std::size_t size = 0;
    for (const Part& part : parts_)
        size += part.channels.front().size();
    return static_cast<int>(size);
}

} // namespace oribund
