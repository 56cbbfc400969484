#include "bench/model/AnimatedEdit.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <numeric>

// What it costs to drag ten thousand selected keyframes to another place, recorded for undo.

using namespace workbench;
using oribund::ChangeKind;
using oribund::Keyframe;

namespace
{
constexpr int kKeys = 10000;

/** The selected keyframes of one graph, at two places a little apart. */
struct Selection {
    oribund::Graph1dBase* graph = nullptr;
    std::vector<int> indices;
    std::vector<double> here;
    std::vector<double> there;
};

std::vector<Selection> selectAll(EditModel& edit)
{
    std::vector<Selection> selections;
    for (const Segment* segment : edit.timeline().tracks().front()->segments) {
        Selection selection;
        selection.graph = segment->effects.front()->paramAt(0)->graph();
        for (const Keyframe& key : selection.graph->keyframes()) {
            selection.here.push_back(key.time);
            selection.there.push_back(key.time + 1e-5);
        }
        selection.indices.resize(selection.here.size());
        std::iota(selection.indices.begin(), selection.indices.end(), 0);
        selections.push_back(std::move(selection));
    }
    return selections;
}

void moveAll(const std::vector<Selection>& selections, bool there, ChangeKind kind)
{
    for (const Selection& s : selections) {
        s.graph->setKeyframeTimes(s.indices, there ? s.there : s.here, kind);
        kind = ChangeKind::Continuation;
    }
}

struct Drag {
    explicit Drag(const benchmark::State& state)
        : edit(oribund::Kt::makePtr<EditModel>(bench::animated(kKeys, state.range(0) == 1), bench::catalogue()))
        , selections(selectAll(*edit))
    {
        for (const Selection& s : selections)
            for (const int index : s.indices)
                s.graph->setKeyframeType(index, oribund::KeyframeType::Smooth);
        edit->undoStack().endGesture();
    }

    EditModelPtr edit;
    std::vector<Selection> selections;
};

/** The move that opens the series: the one before which the state is remembered. */
void keyframesMovedFirst(benchmark::State& state)
{
    const Drag drag(state);
    for (auto _ : state) {
        moveAll(drag.selections, true, ChangeKind::Start);
        state.PauseTiming();
        drag.edit->undoStack().cancelGesture();
        state.ResumeTiming();
    }
}

void keyframesMoved(benchmark::State& state)
{
    const Drag drag(state);
    bool there = true;
    moveAll(drag.selections, there, ChangeKind::Start);
    for (auto _ : state)
        moveAll(drag.selections, there = !there, ChangeKind::Continuation);
}

void keyframesMovedOneByOne(benchmark::State& state)
{
    const Drag drag(state);
    bool there = true;
    moveAll(drag.selections, there, ChangeKind::Start);
    for (auto _ : state) {
        there = !there;
        for (const Selection& s : drag.selections)
            for (const int index : s.indices)
                s.graph->moveKeyframe(index, (there ? s.there : s.here)[static_cast<std::size_t>(index)],
                                      ChangeKind::Continuation);
    }
}

/** The peer: a sorted array, of which each keyframe is taken out and put in again, and nothing is recorded. */
void arrayMoved(benchmark::State& state)
{
    const auto edit = oribund::Kt::makePtr<EditModel>(bench::animated(kKeys, state.range(0) == 1), bench::catalogue());
    const std::vector<Selection> selections = selectAll(*edit);
    std::vector<std::vector<Keyframe>> arrays;
    for (const Selection& s : selections)
        arrays.push_back(s.graph->keyframes());
    const auto isBefore = [](const Keyframe& key, double time) { return key.time < time; };
    bool there = false;
    for (auto _ : state) {
        there = !there;
        for (std::size_t i = 0; i < arrays.size(); ++i) {
            std::vector<Keyframe>& keys = arrays[i];
            for (std::size_t k = 0; k < keys.size(); ++k) {
                Keyframe key = keys[k];
                keys.erase(keys.begin() + static_cast<std::ptrdiff_t>(k));
                key.time = (there ? selections[i].there : selections[i].here)[k];
                keys.insert(std::lower_bound(keys.begin(), keys.end(), key.time, isBefore), key);
            }
            benchmark::DoNotOptimize(keys.data());
        }
    }
}
} // namespace

BENCHMARK(keyframesMovedFirst)->Arg(1)->Arg(100)->ArgName("graphs");
BENCHMARK(keyframesMoved)->Arg(1)->Arg(100)->ArgName("graphs");
BENCHMARK(keyframesMovedOneByOne)->Arg(1)->Arg(100)->ArgName("graphs");
BENCHMARK(arrayMoved)->Arg(1)->Arg(100)->ArgName("graphs");
