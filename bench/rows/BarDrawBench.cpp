// What the time bar of an effect costs to draw and to point at, however many keyframes it shows.

#include "tests/support/FakeView.h"
#include "tests/support/TestHost.h"

#include "oribund/controls/bars/CompoundEffectTherm.h"
#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/canvas/RecordingRenderer.h"
#include "oribund/host/effects/params/EffectValParam.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace oribund
{
namespace
{

constexpr unsigned short kWidth = 1000;

/** A bar over ten seconds with one animated parameter. */
class Bar
{
public:
    explicit Bar(int keys)
    {
        ParamInfo info;
        info.id = IdStamp(2, 1, 0);
        const auto param = Kt::makePtr<EffectValParam<double>>(info);
        std::vector<Keyframe> keyframes(static_cast<std::size_t>(keys));
        for (int i = 0; i < keys; ++i) {
            keyframes[static_cast<std::size_t>(i)].time = (i + 0.5) / keys;
            keyframes[static_cast<std::size_t>(i)].value = i % 7;
        }
        param->setFunctionType(EffectValParamFnType::Keyframed, 0.0);
        param->graph()->setKeyframes({&keyframes, 1});
        const auto effect = Kt::makePtr<EffectInstance>(IdStamp(1, 1, 0), String("bench"), WString(L"Bench"));
        effect->addParam(param);
        vob.add(effect);
        CompoundEffectTherm::InitArgs args(kWidth, 0, &canvas);
        args.vob = &vob;
        args.track = test::FakeMonitor::track();
        bar = std::make_unique<CompoundEffectTherm>(args);
        bar->open();
    }

    test::TestHost host;
    test::FakeVob vob;
    Canvas canvas{{kWidth, 100}};
    std::unique_ptr<CompoundEffectTherm> bar;
};

void drawBar(benchmark::State& state)
{
    Bar shown(static_cast<int>(state.range(0)));
    RecordingRenderer renderer;
    for (auto _ : state) {
        renderer.clear();
        shown.bar->draw(renderer);
    }
}

BENCHMARK(drawBar)->Arg(100)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMicrosecond);

void pointAtBar(benchmark::State& state)
{
    const Bar shown(static_cast<int>(state.range(0)));
    int x = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(shown.bar->getClosestKF(x = (x + 17) % kWidth, 6));
}

BENCHMARK(pointAtBar)->Arg(1000);

} // namespace
} // namespace oribund
