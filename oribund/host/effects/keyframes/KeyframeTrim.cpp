#include "oribund/host/effects/keyframes/KeyframeTrim.h"

#include "oribund/host/effects/keyframes/KeyframeSelection.h"
#include "oribund/host/effects/keyframes/KeyframeSpan.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace oribund
{

KeyframeTrim::KeyframeTrim(double frame, FindEffect findEffect)
    : frame_(frame)
    , findEffect_(std::move(findEffect))
{
}

KeyframeTrim::~KeyframeTrim() = default;

void KeyframeTrim::add(const EffectInstance& effect, double length, const KeyframeSelection& selection)
{
    forEachAnimated(effect, [&](const EffectValParamBase& param, const Graph1dBase&) {
        const auto times = selection.times(effect.id(), param.id());
        if (times.empty() || !(length > 0.0) || !effect.canEditParam(param))
            return;
        Part part{effect.id(), param.id(), length, 0, 0, 0, 0, {}, {times.begin(), times.end()}, {}};
        part.now = part.before;
        if (relocate(part, param))
            parts_.push_back(std::move(part));
    });
}

/** Finds the keyframes by where they should be. False when none of them is there. */
bool KeyframeTrim::relocate(Part& part, const EffectValParamBase& param) const
{
    const Graph1dBase& graph = *param.graph();
    part.graphSize = graph.size();
    part.indices.clear();
    std::size_t kept = 0;
    for (std::size_t i = 0; i < part.now.size(); ++i) {
        const int index = graph.indexAt(part.now[i]);
        if (index < 0)
            continue;
        part.indices.push_back(index);
        part.now[kept] = graph.timeAt(index);
        part.before[kept++] = part.before[i];
    }
    part.now.resize(kept);
    part.before.resize(kept);
    if (kept > 0)
        findLimits(part, param);
    return kept > 0;
}

void KeyframeTrim::findLimits(Part& part, const EffectValParamBase& param) const
{
    const Graph1dBase& graph = *param.graph();
    const auto& indices = part.indices;
    double down = part.now.front() * part.length;
    double up = (1.0 - part.now.back()) * part.length;
    const auto roomBetween = [&](int left, int right) {
        return (graph.timeAt(right) - graph.timeAt(left)) * part.length - frame_;
    };
    for (std::size_t i = 0; i < indices.size(); ++i) {
        const int left = indices[i] - 1;
        const int right = indices[i] + 1;
        if (left >= 0 && (i == 0 || indices[i - 1] != left))
            down = std::min(down, roomBetween(left, indices[i]));
        if (right < graph.size() && (i + 1 == indices.size() || indices[i + 1] != right))
            up = std::min(up, roomBetween(indices[i], right));
    }
    part.least = part.shift - wholeFrames(down);
    part.most = part.shift + wholeFrames(up);
}

/** How many of them fit into the room there is. */
long long KeyframeTrim::wholeFrames(double seconds) const
{
    // Times are sums and products of frame lengths: what is a hair short of a frame is one.
    constexpr double kHair = 1e-6;
    return std::max(0LL, static_cast<long long>(std::floor(seconds / frame_ + kHair)));
}

/** The parameter of a part as it is now; empty when it cannot be edited (any more). */
Kt::Ptr<EffectValParamBase> KeyframeTrim::find(const Part& part) const
{
    const auto [effect, length] = findEffect_(part.effect);
    if (std::abs(length - part.length) > kValueTolerance)
        return {};
    const Kt::Ptr<EffectValParamBase> param = effect ? effect->findParam(part.param) : Kt::Ptr<EffectValParamBase>();
    return animatedGraph(param.get()) && effect->canEditParam(*param) ? param : Kt::Ptr<EffectValParamBase>();
}

/** Whether somebody else, such as undo, has put everything back. */
bool KeyframeTrim::isBack(const Part& part, const EffectValParamBase& param)
{
    return part.shift != 0 && std::all_of(part.before.begin(), part.before.end(),
                                          [&](double time) { return param.graph()->indexAt(time) >= 0; });
}

/** As find(), with the keyframes of the part, wherever others have put them; empty when none is left to move. */
Kt::Ptr<EffectValParamBase> KeyframeTrim::bringInStep(Part& part) const
{
    const Kt::Ptr<EffectValParamBase> param = find(part);
    if (!param)
        return {};
    const Graph1dBase& graph = *param->graph();
    bool known = graph.size() == part.graphSize;
    for (std::size_t i = 0; known && i < part.indices.size(); ++i)
        known = graph.timeAt(part.indices[i]) == part.now[i];
    return known || (!isBack(part, *param) && relocate(part, *param)) ? param : Kt::Ptr<EffectValParamBase>();
}

long long KeyframeTrim::limited(double frames) const
{
    constexpr double kFar = 1e15;
    auto shift = static_cast<long long>(std::clamp(frames, -kFar, kFar));
    for (const Part& part : parts_)
        shift = std::min(shift, part.most);
    for (const Part& part : parts_)
        shift = std::max(shift, part.least);
    return shift;
}

bool KeyframeTrim::moveBy(double seconds)
{
    if (!std::isfinite(seconds))
        return false;
    asked_ += seconds;
    dropLost();
    const long long shift = limited(std::round(asked_ / frame_));
    bool moved = false;
    for (Part& part : parts_)
        moved = move(part, shift) || moved;
    return moved;
}

void KeyframeTrim::restore()
{
    for (Part& part : parts_) {
        const Kt::Ptr<EffectValParamBase> param = find(part);
        if (!param || !isBack(part, *param)) {
            move(part, 0);
        } else {
            part.now = part.before;
            part.shift = 0;
        }
    }
}

bool KeyframeTrim::move(Part& part, long long shift)
{
    // Observers of the parameters that have moved already may have changed this one.
    const Kt::Ptr<EffectValParamBase> param = shift == part.shift ? nullptr : bringInStep(part);
    if (!param)
        return false;
    std::vector<double> times = part.before;
    for (double& time : times) {
        const double low = std::min(time, 0.0);
        const double high = std::max(time, 1.0);
        time = std::clamp(time + static_cast<double>(shift) * frame_ / part.length, low, high);
    }
    if (!param->graph()->setKeyframeTimes(part.indices, times, kind_))
        return false;
    kind_ = ChangeKind::Continuation;
    part.now = std::move(times);
    part.shift = shift;
    return true;
}

void KeyframeTrim::dropLost()
{
    std::erase_if(parts_, [this](Part& part) { return !bringInStep(part); });
}

void KeyframeTrim::select(KeyframeSelection& selection)
{
    dropLost();
    for (const Part& part : parts_)
        selection.assign(part.effect, part.param, part.now);
}

} // namespace oribund
