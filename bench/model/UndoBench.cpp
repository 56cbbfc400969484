#include "bench/model/AnimatedEdit.h"
#include "workbench/model/Editor.h"
#include "workbench/model/Ids.h"
#include "workbench/model/projection/Projector.h"

#include "oribund/host/effects/params/EffectValParam.h"

#include <benchmark/benchmark.h>

// What one undo and redo costs in an edit with a given number of keyframes: the same, whatever the number.

using namespace workbench;
using bench::animated;
using bench::catalogue;

namespace
{
void undoAndRedo(benchmark::State& state, EditModel& edit)
{
    edit.undoStack().endGesture();
    for (auto _ : state) {
        edit.undoStack().undo();
        edit.undoStack().redo();
    }
}

oribund::EffectValParam<double>& firstLevel(EditModel& edit)
{
    const auto& effect = edit.timeline().tracks().front()->segments.front()->effects.front();
    return static_cast<oribund::EffectValParam<double>&>(*effect->paramAt(0));
}

void keyframeValue(benchmark::State& state)
{
    const auto edit =
        oribund::Kt::makePtr<EditModel>(animated(static_cast<int>(state.range(0)), state.range(1)), catalogue());
    firstLevel(*edit).setKeyframeValueAt(50, 0.9);
    undoAndRedo(state, *edit);
}

void keyframeMove(benchmark::State& state)
{
    const auto edit =
        oribund::Kt::makePtr<EditModel>(animated(static_cast<int>(state.range(0)), state.range(1)), catalogue());
    firstLevel(*edit).graph()->moveKeyframe(50, 1.5);
    undoAndRedo(state, *edit);
}

void effectAdded(benchmark::State& state)
{
    const auto edit =
        oribund::Kt::makePtr<EditModel>(animated(static_cast<int>(state.range(0)), state.range(1)), catalogue());
    Editor(*edit).addEffect(edit->timeline().tracks().front()->segments.front()->id(), "level");
    undoAndRedo(state, *edit);
}

void segmentTrimmed(benchmark::State& state)
{
    const auto edit =
        oribund::Kt::makePtr<EditModel>(animated(static_cast<int>(state.range(0)), state.range(1)), catalogue());
    Editor(*edit).trimEnd(edit->timeline().tracks().front()->segments.front()->id(), 20);
    undoAndRedo(state, *edit);
}

void dragRecorded(benchmark::State& state)
{
    const auto edit =
        oribund::Kt::makePtr<EditModel>(animated(static_cast<int>(state.range(0)), state.range(1)), catalogue());
    auto& level = firstLevel(*edit);
    level.setKeyframeValueAt(50, 0.9, oribund::ChangeKind::Start);
    double value = 0.0;
    for (auto _ : state)
        level.setKeyframeValueAt(50, value = value > 0.5 ? 0.1 : 0.9, oribund::ChangeKind::Continuation);
}

void parameterProjected(benchmark::State& state)
{
    const auto edit = oribund::Kt::makePtr<EditModel>(animated(static_cast<int>(state.range(0)), false), catalogue());
    const auto effect = edit->timeline().tracks().front()->segments.front()->effects.front()->id();
    for (auto _ : state)
        benchmark::DoNotOptimize(projectParam(*edit, effect, paramStamp(0)));
}
} // namespace

BENCHMARK(keyframeValue)->ArgsProduct({{1000, 100000}, {0, 1}})->ArgNames({"keys", "one"});
BENCHMARK(keyframeMove)->ArgsProduct({{1000, 100000}, {0, 1}})->ArgNames({"keys", "one"});
BENCHMARK(effectAdded)->ArgsProduct({{1000, 100000}, {0, 1}})->ArgNames({"keys", "one"});
BENCHMARK(segmentTrimmed)->ArgsProduct({{1000, 100000}, {0}})->ArgNames({"keys", "one"});
BENCHMARK(dragRecorded)->ArgsProduct({{1000, 100000}, {0, 1}})->ArgNames({"keys", "one"});
BENCHMARK(parameterProjected)->Arg(1000)->Arg(100000);
