// What a panel of a hundred rows costs each time the current time moves, as it does at every frame while playing.

#include "tests/support/FakeView.h"
#include "tests/support/TestHost.h"

#include "oribund/controls/rows/KeyframeAngleCtrls.h"
#include "oribund/controls/rows/KeyframeFloatCtrlsBase.h"
#include "oribund/host/canvas/Canvas.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace oribund
{
namespace
{

constexpr int kRows = 100;
constexpr int kFrames = 250;
constexpr int kKeyframes = 20;

/** Rows of an effect of ten seconds, open on a canvas without a screen: three of four for a number, one for an angle.
 */
class Panel
{
public:
    explicit Panel(bool animated)
    {
        for (int i = 0; i < kRows; ++i) {
            ParamInfo info;
            info.id = IdStamp(1, 0, i);
            info.name = "p";
            if (i % 4 == 3)
                addAngle(info, animated);
            else
                addNumber(info, animated);
        }
        for (const auto& row : rows)
            row->open();
    }

    void addNumber(const ParamInfo& info, bool animated)
    {
        const auto param = Kt::makePtr<EffectValParam<double>>(info, 50.0, 0.0, 100.0);
        effect->addParam(param);
        if (animated)
            animate(*param, [](int i) { return i % 2 == 0 ? 10.0 : 90.0; });
        rows.push_back(std::make_unique<KeyframeFloatCtrlsBase>(handle, param, kWidth, kLabelWidth, 0, &canvas));
    }

    void addAngle(const ParamInfo& info, bool animated)
    {
        const auto param = Kt::makePtr<EffectValParam<Angle>>(info, Angle{0.0}, Angle{-3600.0}, Angle{3600.0});
        effect->addParam(param);
        if (animated)
            animate(*param, [](int i) { return Angle{i * 90.0}; });
        rows.push_back(std::make_unique<KeyframeAngleCtrls>(handle, param, kWidth, kLabelWidth, &canvas));
    }

    template <class P, class ValueAt>
    static void animate(EffectValParam<P>& param, ValueAt valueAt)
    {
        param.setFunctionType(EffectValParamFnType::Keyframed, 0.0);
        for (int i = 1; i < kKeyframes; ++i)
            param.addKeyframeAt(i / (kKeyframes - 1.0), valueAt(i));
    }

    static constexpr unsigned short kWidth = 400;
    static constexpr unsigned short kLabelWidth = 100;

    test::TestHost host;
    test::FakeVob vob;
    Canvas canvas{{kWidth, 2400}};
    Kt::Ptr<EffectInstance> effect = Kt::makePtr<EffectInstance>(IdStamp(1, 0, 0), String("bench"), WString(L"Bench"));
    FXViewHandle handle = vob.add(effect, 0.0, 10.0);
    std::vector<std::unique_ptr<KeyframeCtrlsBase>> rows;
};

void play(benchmark::State& state, bool animated)
{
    Panel panel(animated);
    int frame = 0;
    const unsigned repaints = panel.canvas.repaintCount();
    for (auto _ : state) {
        frame = (frame + 1) % kFrames;
        panel.vob.setCurrentTime(frame * 0.04);
    }
    state.counters["repaints"] =
        benchmark::Counter(panel.canvas.repaintCount() - repaints, benchmark::Counter::kAvgIterations);
}

void playAnimatedRows(benchmark::State& state)
{
    play(state, true);
}

BENCHMARK(playAnimatedRows)->Unit(benchmark::kMicrosecond);

void playConstantRows(benchmark::State& state)
{
    play(state, false);
}

BENCHMARK(playConstantRows)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace oribund
