#include "tests/support/FakeView.h"

#include "oribund/host/effects/params/EffectValParam.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <random>

// What bars and buttons ask of the keyframes of a track, beside what one would write for it without them.

using namespace oribund;

namespace
{
constexpr int kEffects = 4;
constexpr int kParams = 50;
constexpr int kKeys = 100;

class Track
{
public:
    Track(int effects, int params, int keys)
    {
        for (int i = 0; i < effects; ++i)
            addEffect(i + 1, params, keys);
        vob.setCurrentTime(5.0);
        vob.monitor->populateKeyframesForCompoundEffect(test::FakeMonitor::track(), sets);
    }

    const FXKeyframeHelpers::KeyframeSet& firstSet() const { return sets.begin()->second; }

    test::FakeVob vob;
    CompoundEffectMonitor::KeyframeSets sets;
    std::vector<std::map<double, double>> maps; ///< the same keyframes by edit time

private:
    void addEffect(int id, int params, int keys)
    {
        const auto effect = Kt::makePtr<EffectInstance>(IdStamp(1, id, 0), String("bench"), WString(L"Bench"));
        for (int i = 0; i < params; ++i) {
            ParamInfo info;
            info.id = IdStamp(2, i + 1, 0);
            const auto param = Kt::makePtr<EffectValParam<double>>(info);
            effect->addParam(param);
            param->setFunctionType(EffectValParamFnType::Keyframed, 0.0);
            for (int key = 1; key < keys; ++key)
                param->graph()->addKeyframe((key + 0.9 * between_(random_)) / keys);
            std::map<double, double>& map = maps.emplace_back();
            for (int key = 0; key < keys; ++key)
                map[param->graph()->timeAt(key) * 10.0] = 0.0;
        }
        vob.add(effect);
    }

    std::mt19937 random_{1};
    std::uniform_real_distribution<double> between_{0.0, 1.0};
};

void adjacentKeyframe(benchmark::State& state)
{
    Track track(kEffects, kParams, kKeys);
    bool forward = false;
    for (auto _ : state)
        benchmark::DoNotOptimize(
            track.vob.monitor->findAdjacentKeyframe(test::FakeMonitor::track(), forward = !forward));
}

void adjacentKeyframeWalk(benchmark::State& state)
{
    Track track(kEffects, kParams, kKeys);
    for (auto _ : state) {
        if (!track.vob.monitor->moveToAdjacentKeyframe(test::FakeMonitor::track(), true))
            track.vob.setCurrentTime(0.0);
    }
}

void adjacentInMaps(benchmark::State& state)
{
    const Track track(kEffects, kParams, kKeys);
    const double time = 5.0;
    bool forward = false;
    for (auto _ : state) {
        forward = !forward;
        double best = forward ? 1e9 : -1e9;
        for (const auto& map : track.maps) {
            const auto at = forward ? map.upper_bound(time) : map.lower_bound(time);
            if (forward && at != map.end())
                best = std::min(best, at->first);
            else if (!forward && at != map.begin())
                best = std::max(best, std::prev(at)->first);
        }
        benchmark::DoNotOptimize(best);
    }
}

void visitCells(benchmark::State& state)
{
    const Track track(1, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    for (auto _ : state) {
        double last = 0.0;
        track.firstSet().visitCells(0.0, 1.0, 1000, [&last](double time, bool) { last = time; });
        benchmark::DoNotOptimize(last);
    }
}

/** Where somebody points, one place after the other. */
class Pointer
{
public:
    double next() { return place_ = place_ > 0.98 ? 0.0 : place_ + 0.017; }

private:
    double place_ = 0.0;
};

void nearestKeyframe(benchmark::State& state)
{
    const Track track(1, 1, 1000);
    Pointer pointer;
    for (auto _ : state)
        benchmark::DoNotOptimize(track.firstSet().nearest(pointer.next()));
}

void nearestByLowerBound(benchmark::State& state)
{
    const Track track(1, 1, 1000);
    const std::vector<double> times = track.firstSet().times();
    Pointer pointer;
    for (auto _ : state) {
        const double time = pointer.next();
        const auto after = std::lower_bound(times.begin(), times.end(), time);
        const bool before =
            after == times.end() || (after != times.begin() && time - *std::prev(after) <= *after - time);
        benchmark::DoNotOptimize(before ? *std::prev(after) : *after);
    }
}

void nearestByScan(benchmark::State& state)
{
    const Track track(1, 1, 1000);
    const std::vector<double> times = track.firstSet().times();
    Pointer pointer;
    for (auto _ : state) {
        const double time = pointer.next();
        benchmark::DoNotOptimize(*std::min_element(times.begin(), times.end(), [time](double a, double b) {
            return std::abs(a - time) < std::abs(b - time);
        }));
    }
}
} // namespace

BENCHMARK(adjacentKeyframe);
BENCHMARK(adjacentKeyframeWalk);
BENCHMARK(adjacentInMaps);
BENCHMARK(visitCells)->Args({1, 100})->Args({1, 10000})->Args({1, 1000000})->Args({200, 100});
BENCHMARK(nearestKeyframe);
BENCHMARK(nearestByLowerBound);
BENCHMARK(nearestByScan);
