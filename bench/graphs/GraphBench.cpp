#include "bench/graphs/ArrayPeer.h"
#include "bench/graphs/Keys.h"
#include "bench/notify/AllocationCount.h"
#include "oribund/host/effects/curves/BezierCurve.h"

#include <benchmark/benchmark.h>

using namespace oribund;

namespace
{

void fill(BezierCurve& curve, const std::vector<Keyframe>& keyframes)
{
    curve.setKeyframes(std::span(&keyframes, 1));
}

void fill(bench::ArrayPeer& peer, const std::vector<Keyframe>& keyframes)
{
    peer.assign(keyframes);
}

int add(BezierCurve& curve, double time)
{
    return curve.addKeyframe(time);
}

int add(bench::ArrayPeer& peer, double time)
{
    return peer.add(time);
}

void remove(BezierCurve& curve, int index)
{
    curve.removeKeyframe(index);
}

void remove(bench::ArrayPeer& peer, int index)
{
    peer.remove(index);
}

void setValue(BezierCurve& curve, int index, double value)
{
    curve.setKeyframeValue(index, value);
}

void setValue(bench::ArrayPeer& peer, int index, double value)
{
    peer.setValue(index, value);
}

template <class Curve, bench::Shape kShape>
void evaluate(benchmark::State& state)
{
    Curve curve;
    const auto keyframes = bench::keyframes(static_cast<int>(state.range(0)), kShape);
    fill(curve, keyframes);
    const auto times = bench::randomTimes();
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(curve.evaluate(times[i++ % times.size()]));
}

template <class Curve, bench::Shape kShape>
void setExisting(benchmark::State& state)
{
    Curve curve;
    const auto keyframes = bench::keyframes(static_cast<int>(state.range(0)), kShape);
    fill(curve, keyframes);
    const auto order = bench::randomOrder(keyframes.size());
    const auto before = bench::allocationCount();
    std::size_t i = 0;
    double value = 0.0;
    for (auto _ : state) {
        const double time = keyframes[order[i++ % order.size()]].time;
        setValue(curve, curve.indexAt(time), value += 1e-6);
    }
    state.counters["allocations"] = static_cast<double>(bench::allocationCount() - before);
}

template <class Curve, bench::Shape kShape>
void insertAndRemove(benchmark::State& state)
{
    Curve curve;
    fill(curve, bench::keyframes(static_cast<int>(state.range(0)), kShape));
    const auto times = bench::randomTimes();
    std::size_t i = 0;
    for (auto _ : state) {
        const int index = add(curve, times[i++ % times.size()]);
        if (index >= 0)
            remove(curve, index);
    }
}

/** Keyframes at shuffled times, half of them added and half taken away again, so that chunks split and join. */
void insertThenRemoveMany(benchmark::State& state)
{
    BezierCurve curve;
    fill(curve, bench::keyframes(static_cast<int>(state.range(0)), bench::Shape::Straight));
    const auto times = bench::randomTimes();
    for (auto _ : state) {
        for (const double time : times)
            curve.addKeyframe(time);
        for (const double time : times)
            curve.removeKeyframe(curve.indexAt(time));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(2 * times.size()));
}

void addBatch(benchmark::State& state)
{
    const auto keyframes = bench::keyframes(static_cast<int>(state.range(0)), bench::Shape::Straight);
    for (auto _ : state) {
        BezierCurve curve;
        const GraphBatch batch(curve, BatchReason::AddKeyframe, BatchReason::EndAddKeyframe, ChangeKind::Single);
        for (const Keyframe& keyframe : keyframes)
            curve.addKeyframeWithValues(keyframe.time, std::span(&keyframe.value, 1));
        benchmark::DoNotOptimize(curve.size());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void sizes(benchmark::internal::Benchmark* benchmark)
{
    for (const int count : {10, 100, 1000, 10000, 100000})
        benchmark->Arg(count);
}

} // namespace

using bench::ArrayPeer;
using bench::Shape;

BENCHMARK(evaluate<BezierCurve, Shape::Straight>)->Apply(sizes);
BENCHMARK(evaluate<ArrayPeer, Shape::Straight>)->Apply(sizes);
BENCHMARK(evaluate<BezierCurve, Shape::Smooth>)->Apply(sizes);
BENCHMARK(evaluate<ArrayPeer, Shape::Smooth>)->Apply(sizes);
BENCHMARK(evaluate<BezierCurve, Shape::Handles>)->Apply(sizes);
BENCHMARK(evaluate<ArrayPeer, Shape::Handles>)->Apply(sizes);
BENCHMARK(setExisting<BezierCurve, Shape::Straight>)->Apply(sizes);
BENCHMARK(setExisting<ArrayPeer, Shape::Straight>)->Apply(sizes);
BENCHMARK(setExisting<BezierCurve, Shape::Smooth>)->Apply(sizes);
BENCHMARK(setExisting<ArrayPeer, Shape::Smooth>)->Apply(sizes);
BENCHMARK(insertAndRemove<BezierCurve, Shape::Straight>)->Apply(sizes);
BENCHMARK(insertAndRemove<ArrayPeer, Shape::Straight>)->Apply(sizes);
BENCHMARK(insertAndRemove<BezierCurve, Shape::Smooth>)->Apply(sizes);
BENCHMARK(insertAndRemove<ArrayPeer, Shape::Smooth>)->Apply(sizes);
BENCHMARK(insertThenRemoveMany)->Arg(1000)->Arg(100000);
BENCHMARK(addBatch)->Arg(100)->Arg(1000)->Arg(10000);
