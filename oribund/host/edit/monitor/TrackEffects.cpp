#include "oribund/host/edit/monitor/TrackEffects.h"

#include "oribund/host/effects/EffectInstance.h"

#include <algorithm>

namespace oribund
{

namespace
{
void addWithParts(const Kt::Ptr<EffectInstance>& effect, std::vector<Kt::Ptr<EffectInstance>>& all)
{
    if (!effect)
        return;
    all.push_back(effect);
    addWithParts(effect->getMask(), all);
    for (const auto& child : effect->embeddedChildren())
        addWithParts(child, all);
}

std::vector<Kt::Ptr<EffectInstance>> withParts(const std::vector<Kt::Ptr<EffectInstance>>& effects)
{
    std::vector<Kt::Ptr<EffectInstance>> all;
    all.reserve(effects.size());
    for (const auto& effect : effects)
        addWithParts(effect, all);
    return all;
}
} // namespace

TrackEffects::~TrackEffects() = default;

std::vector<Kt::Ptr<EffectInstance>> TrackEffects::getEffectsAt(double) const
{
    return {};
}

std::vector<Kt::Ptr<EffectInstance>> TrackEffects::effectsOf(const IdStamp& track) const
{
    std::vector<Kt::Ptr<EffectInstance>> effects = getEffects(track);
    std::erase_if(effects, [](const auto& effect) { return !effect; });
    return effects;
}

std::vector<Kt::Ptr<EffectInstance>> TrackEffects::effectsAndPartsOf(const IdStamp& track) const
{
    return withParts(getEffects(track));
}

std::vector<Kt::Ptr<EffectInstance>> TrackEffects::effectsAndPartsAt(double editTime) const
{
    return withParts(getEffectsAt(editTime));
}

IdStamp TrackEffects::getTrackOf(const IdStamp& effect) const
{
    for (const IdStamp& track : getTracks())
        for (const auto& candidate : effectsOf(track))
            if (EffectInstance::findWithin(candidate, effect))
                return track;
    return {};
}

WString TrackEffects::getTrackName(const IdStamp&) const
{
    return {};
}

NumRange<double> TrackEffects::getCompoundEditRegion(const IdStamp& track) const
{
    NumRange<double> whole;
    bool first = true;
    for (const auto& effect : effectsOf(track)) {
        const NumRange<double> region = getEditRegion(effect->id());
        whole = first ? region
                      : NumRange<double>(std::min(whole.start(), region.start()), std::max(whole.end(), region.end()));
        first = false;
    }
    return whole;
}

} // namespace oribund
