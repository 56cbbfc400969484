#include "oribund/host/effects/keyframes/KeyframeSet.h"

#include "oribund/host/effects/curves/SortedTimes.h"
#include "oribund/host/effects/keyframes/KeyframeCells.h"
#include "oribund/host/effects/keyframes/KeyframeSelection.h"
#include "oribund/host/effects/keyframes/KeyframeSpan.h"

#include <algorithm>

namespace oribund::FXKeyframeHelpers
{

struct KeyframeSet::Shared {
    const std::vector<double>& sortedTimes();
    void collectTimes();

    Kt::Ptr<EffectInstance> effect;
    const KeyframeSelection* selection = nullptr;
    std::vector<double> times; // distinct, ascending
    bool upToDate = false;
};

const std::vector<double>& KeyframeSet::Shared::sortedTimes()
{
    if (!upToDate)
        collectTimes();
    return times;
}

void KeyframeSet::Shared::collectTimes()
{
    upToDate = true;
    times.clear();
    if (!effect)
        return;
    forEachAnimated(*effect, [this](const EffectValParamBase&, const Graph1dBase& graph) {
        const KeyframeSpan span(graph);
        times.reserve(times.size() + static_cast<std::size_t>(span.size()));
        for (int i = span.first; i < span.end; ++i)
            times.push_back(graph.timeAt(i));
    });
    sortDistinct(times, kValueTolerance);
}

KeyframeSet::KeyframeSet()
    : shared_(std::make_shared<Shared>())
{
}

KeyframeSet::KeyframeSet(Kt::Ptr<EffectInstance> effect, const KeyframeSelection& selection)
    : shared_(std::make_shared<Shared>())
{
    shared_->effect = std::move(effect);
    shared_->selection = &selection;
}

KeyframeSet::KeyframeSet(const KeyframeSet&) = default;
KeyframeSet& KeyframeSet::operator=(const KeyframeSet&) = default;
KeyframeSet::~KeyframeSet() = default;

const Kt::Ptr<EffectInstance>& KeyframeSet::effect() const
{
    return shared_->effect;
}

bool KeyframeSet::empty() const
{
    return size() == 0;
}

int KeyframeSet::size() const
{
    int size = 0;
    if (effect())
        forEachAnimated(*effect(), [&](const EffectValParamBase&, const Graph1dBase& graph) {
            size += KeyframeSpan(graph).size();
        });
    return size;
}

int KeyframeSet::keyframedParamCount() const
{
    int count = 0;
    if (effect())
        forEachAnimated(*effect(), [&](const EffectValParamBase&, const Graph1dBase&) { ++count; });
    return count;
}

int KeyframeSet::countAt(double fxTime) const
{
    int count = 0;
    if (effect() && isWithinEffect(fxTime))
        forEachAnimated(*effect(), [&](const EffectValParamBase&, const Graph1dBase& graph) {
            count += graph.indexAt(fxTime) >= 0 ? 1 : 0;
        });
    return count;
}

std::optional<double> KeyframeSet::nearest(double fxTime) const
{
    const std::vector<double>& all = times();
    const auto after = std::lower_bound(all.begin(), all.end(), fxTime);
    if (after == all.begin())
        return all.empty() ? std::nullopt : std::optional(*after);
    const double before = *std::prev(after);
    return after != all.end() && *after - fxTime < fxTime - before ? *after : before;
}

std::optional<double> KeyframeSet::next(double fxTime) const
{
    return firstLater(times(), fxTime, kValueTolerance);
}

std::optional<double> KeyframeSet::previous(double fxTime) const
{
    return lastEarlier(times(), fxTime, kValueTolerance);
}

std::vector<FXKeyframe> KeyframeSet::at(double fxTime) const
{
    std::vector<FXKeyframe> found;
    if (!effect() || !isWithinEffect(fxTime))
        return found;
    const IdStamp& id = effect()->id();
    forEachAnimated(*effect(), [&](const EffectValParamBase& param, const Graph1dBase& graph) {
        if (const int index = graph.indexAt(fxTime); index >= 0) {
            const double own = graph.timeAt(index);
            found.push_back({id, param.id(), own, shared_->selection->contains(id, param.id(), own)});
        }
    });
    return found;
}

const std::vector<double>& KeyframeSet::times() const
{
    return shared_->sortedTimes();
}

void KeyframeSet::visitCells(double from, double to, int cells,
                             const std::function<void(double fxTime, bool selected)>& draw) const
{
    if (!effect() || cells <= 0 || !(from < to))
        return;
    KeyframeCells drawn(from, to, cells);
    forEachAnimated(*effect(), [&](const EffectValParamBase&, const Graph1dBase& graph) { drawn.add(graph); });
    forEachAnimated(*effect(), [&](const EffectValParamBase& param, const Graph1dBase&) {
        drawn.addSelected(shared_->selection->times(effect()->id(), param.id()));
    });
    drawn.visit(draw);
}

void KeyframeSet::invalidate()
{
    shared_->upToDate = false;
}

void KeyframeSet::forget()
{
    *shared_ = Shared();
}

} // namespace oribund::FXKeyframeHelpers
