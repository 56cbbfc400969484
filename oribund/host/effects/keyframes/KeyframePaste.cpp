#include "oribund/host/effects/keyframes/KeyframePaste.h"

#include "oribund/host/base/FXTimeMapping.h"
#include "oribund/host/effects/curves/BezierCurve.h"
#include "oribund/host/effects/keyframes/KeyframeSelection.h"
#include "oribund/host/effects/keyframes/KeyframeSpan.h"
#include "oribund/host/effects/params/EffectValParam.h"
#include "oribund/host/effects/params/ParamVisitor.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace oribund
{

namespace
{

bool isOwn(const KeyframeClip::Part& part, const EffectInstance& effect, const EffectValParamBase& param)
{
    return effect.id() == part.effect && param.id() == part.param;
}

bool isAlike(const KeyframeClip::Part& part, const EffectInstance&, const EffectValParamBase& param)
{
    return param.name() == part.paramName;
}

bool isSameOfItsKind(const KeyframeClip::Part& part, const EffectInstance& effect, const EffectValParamBase& param)
{
    return effect.tagTypeId() == part.effectTag && isAlike(part, effect, param);
}

bool takes(const Kt::Ptr<EffectValParamBase>& param, const KeyframeClip::Part& part)
{
    return param->isKeyframable() && param->constantValue().index() == part.valueType &&
           param->graph()->channelCount() == static_cast<int>(part.channels.size());
}

/** Keeps the values of one keyframe, in all channels, within the range of the parameter. */
template <class P>
void clampKey(const EffectValParam<P>& param, std::vector<std::vector<Keyframe>>& channels, std::size_t key)
{
    if constexpr (isNumericParam<P>) {
        auto numbers = ParamTraits<P>::split(P());
        for (std::size_t i = 0; i < numbers.size(); ++i)
            numbers[i] = channels[i][key].value;
        numbers = ParamTraits<P>::split(param.clamp(ParamTraits<P>::join(numbers)));
        for (std::size_t i = 0; i < numbers.size(); ++i)
            channels[i][key].value = numbers[i];
    }
}

void clampKeys(EffectValParamBase& param, std::vector<std::vector<Keyframe>>& channels)
{
    visitParam(param, [&](const auto& typed) {
        for (std::size_t key = 0; key < channels.front().size(); ++key)
            clampKey(typed, channels, key);
    });
}

void removeNear(Graph1dBase& graph, double fxTime, double distance)
{
    for (int index = graph.nearestIndex(fxTime); index >= 0; index = graph.nearestIndex(fxTime)) {
        if (std::abs(graph.timeAt(index) - fxTime) > distance)
            return;
        graph.removeKeyframe(index);
    }
}

} // namespace

KeyframePaste::KeyframePaste(const KeyframeClip& clip, double at, double frame)
    : clip_(clip)
    , at_(at)
    , frame_(frame)
{
}

KeyframePaste::~KeyframePaste() = default;

void KeyframePaste::offer(const Kt::Ptr<EffectInstance>& effect, const NumRange<double>& region)
{
    if (region.length() > 0.0)
        offers_.push_back({effect, region});
}

void KeyframePaste::place()
{
    // What has a parameter of its own gets it before anything that would do with any.
    std::vector<const KeyframeClip::Part*> homeless;
    for (const KeyframeClip::Part& part : clip_.parts())
        homeless.push_back(&part);
    for (const Fits fits : {isOwn, isSameOfItsKind, isAlike})
        std::erase_if(homeless, [&](const KeyframeClip::Part* part) { return placeWhere(*part, fits); });
}

bool KeyframePaste::placeWhere(const KeyframeClip::Part& part, Fits fits)
{
    for (const Offer& offer : offers_) {
        for (const auto& param : offer.effect->params()) {
            if (!fits(part, *offer.effect, *param) || !takes(param, part) || isTaken(*param) ||
                !offer.effect->canEditParam(*param))
                continue;
            land(offer, param, part);
            return true;
        }
    }
    return false;
}

void KeyframePaste::placeAllIn(const IdStamp& effect, const IdStamp& paramId)
{
    for (const Offer& offer : offers_) {
        const auto param = offer.effect->id() == effect ? offer.effect->findParam(paramId) : nullptr;
        if (!param || !offer.effect->canEditParam(*param))
            continue;
        for (const KeyframeClip::Part& part : clip_.parts()) {
            if (takes(param, part))
                land(offer, param, part);
        }
    }
}

bool KeyframePaste::isTaken(const EffectValParamBase& param) const
{
    return std::any_of(landings_.begin(), landings_.end(),
                       [&](const Landing& landing) { return landing.param.get() == &param; });
}

/** Whether something else comes there already. */
bool KeyframePaste::isTaken(const EffectValParamBase& param, double fxTime) const
{
    return std::any_of(landings_.begin(), landings_.end(), [&](const Landing& landing) {
        const std::vector<Keyframe>& keys = landing.channels.front();
        const auto near = std::lower_bound(keys.begin(), keys.end(), fxTime - landing.reach,
                                           [](const Keyframe& key, double limit) { return key.time < limit; });
        return landing.param.get() == &param && near != keys.end() && near->time <= fxTime + landing.reach;
    });
}

void KeyframePaste::land(const Offer& offer, const Kt::Ptr<EffectValParamBase>& param, const KeyframeClip::Part& part)
{
    const double length = offer.region.length();
    Landing landing{offer.effect, param, std::max(frame_ / 2.0 / length, kValueTolerance), {}};
    landing.channels.resize(part.channels.size());
    for (std::size_t key = 0; key < part.channels.front().size(); ++key) {
        const double time = toFXTime(offer.region, at_ + part.channels.front()[key].time).normalised;
        if (!isWithinEffect(time) || isTaken(*param, time))
            continue;
        for (std::size_t i = 0; i < part.channels.size(); ++i) {
            Keyframe landed = part.channels[i][key];
            landed.time = time;
            landed.in.dt /= length;
            landed.out.dt /= length;
            landing.channels[i].push_back(landed);
        }
    }
    clampKeys(*param, landing.channels);
    if (!landing.channels.front().empty())
        landings_.push_back(std::move(landing));
}

int KeyframePaste::count() const
{
    std::size_t count = 0;
    for (const Landing& landing : landings_)
        count += landing.channels.front().size();
    return static_cast<int>(count);
}

void KeyframePaste::apply(KeyframeSelection& pasted) const
{
    for (const Landing& landing : landings_) {
        write(landing);
        const Graph1dBase* const graph = animatedGraph(landing.param.get());
        for (const Keyframe& key : landing.channels.front()) {
            if (const int index = graph ? graph->indexAt(key.time) : -1; index >= 0)
                pasted.set(landing.effect->id(), landing.param->id(), graph->timeAt(index), true);
        }
    }
}

void KeyframePaste::write(const Landing& landing)
{
    const std::vector<Keyframe>& keys = landing.channels.front();
    Graph1dBase& graph = *landing.param->graph();
    const GraphBatch batch(graph, BatchReason::Replace, BatchReason::Replace, ChangeKind::Single);
    landing.param->setFunctionType(EffectValParamFnType::Keyframed, keys.front().time);
    // All that is replaced goes first: keyframes that come may be closer to each other than to what was there.
    for (const Keyframe& key : keys)
        removeNear(graph, key.time, landing.reach);
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const int index = graph.addKeyframe(keys[i].time);
        for (std::size_t channel = 0; index >= 0 && channel < landing.channels.size(); ++channel)
            graph.channel(static_cast<int>(channel)).setKeyframe(index, landing.channels[channel][i]);
    }
}

} // namespace oribund
