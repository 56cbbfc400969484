// What the panel of an effect costs when it is generated: headless, beside the bare rows and beside Qt's widgets; on
// its surface; and when one of its values is edited.

#include "bench/surface/NativeForm.h"
#include "skin/PanelSurface.h"
#include "skin/SkinApplication.h"
#include "tests/support/FakeView.h"
#include "tests/support/TestHost.h"

#include "oribund/controls/rows/KeyframeFloatCtrlsBase.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/scroll/ScrollPanel.h"
#include "oribund/panels/FXPanelGenerator.h"
#include "oribund/panels/ParamGroup.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>

#include <memory>
#include <string>
#include <vector>

namespace oribund
{
namespace
{

using Number = EffectValParam<double>;

constexpr unsigned short kWidth = 420;
constexpr unsigned short kLabelWidth = 100;
constexpr int kHeight = 600;
constexpr int kRowsInGroup = 10;

/** An effect with so many numbers, in groups of ten. */
class Described
{
public:
    explicit Described(int count)
    {
        for (int i = 0; i < count; ++i) {
            const std::wstring number = std::to_wstring(i);
            if (i % kRowsInGroup == 0)
                effect->startGroup(IdStamp(3, i, 0), UIString((L"Group " + number).c_str()));
            ParamInfo info;
            info.id = IdStamp(1, 0, i);
            info.name = "p";
            info.description = UIString((L"Number " + number).c_str());
            params.push_back(Kt::makePtr<Number>(info, 50.0, 0.0, 100.0));
            effect->addParam(params.back());
            if (i % kRowsInGroup == kRowsInGroup - 1)
                effect->endGroup();
        }
    }

    std::unique_ptr<WidgetGroup> generate(Canvas& canvas) const
    {
        auto panel = std::make_unique<WidgetGroup>(WidgetGroup::InitArgs(kWidth, 0, &canvas));
        FXPanelGenerator(handle, panel.get(), nullptr).generateUI();
        return panel;
    }

    test::TestHost host;
    test::FakeVob vob;
    Kt::Ptr<EffectInstance> effect = Kt::makePtr<EffectInstance>(IdStamp(1, 0, 0), String("bench"), WString(L"Bench"));
    FXViewHandle handle = vob.add(effect, 0.0, 10.0);
    std::vector<Kt::Ptr<Number>> params;
};

void generatePanel(benchmark::State& state)
{
    const Described described(static_cast<int>(state.range(0)));
    Canvas canvas({kWidth, kHeight});
    for (auto _ : state)
        benchmark::DoNotOptimize(described.generate(canvas));
    state.counters["perRow"] =
        benchmark::Counter(static_cast<double>(state.range(0)),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

/** The rows and groups by themselves: nothing is laid out, nobody knows which shows what. */
void makeObjects(benchmark::State& state)
{
    const Described described(static_cast<int>(state.range(0)));
    Canvas canvas({kWidth, kHeight});
    for (auto _ : state) {
        std::vector<std::unique_ptr<Glob>> made;
        made.reserve(described.params.size() * 2);
        for (std::size_t i = 0; i < described.params.size(); ++i) {
            if (i % kRowsInGroup == 0)
                made.push_back(std::make_unique<ParamGroup>(ParamGroup::InitArgs(kWidth, 0, &canvas)));
            made.push_back(std::make_unique<KeyframeFloatCtrlsBase>(described.handle, described.params[i], kWidth,
                                                                    kLabelWidth, 0, &canvas));
        }
        benchmark::DoNotOptimize(made.data());
    }
}

void makeNativeForm(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(std::make_unique<bench::NativeForm>(static_cast<int>(state.range(0))));
}

/** A widget in a window of its own. */
void show(QWidget& window)
{
    window.resize(kWidth, kHeight);
    window.show();
    QCoreApplication::processEvents();
}

class Window
{
public:
    explicit Window(const Described& described)
    {
        auto scroll = std::make_unique<ScrollPanel>(GlobCreationInfo(kWidth, kHeight, &surface_.canvas()));
        scroll->setContent(described.generate(surface_.canvas()));
        surface_.setPanel(std::move(scroll), qt::PanelSurface::Fits::Both);
        show(surface_);
    }

    const Canvas& canvas() { return surface_.canvas(); }

private:
    qt::PanelSurface surface_;
};

void showGenerated(benchmark::State& state)
{
    const Described described(static_cast<int>(state.range(0)));
    for (auto _ : state)
        const Window window(described);
}

void showNativeForm(benchmark::State& state)
{
    for (auto _ : state) {
        bench::NativeForm form(static_cast<int>(state.range(0)));
        show(form);
    }
}

void editGenerated(benchmark::State& state)
{
    const Described described(static_cast<int>(state.range(0)));
    Window window(described);
    const unsigned before = window.canvas().repaintCount();
    double value = 0.0;
    for (auto _ : state) {
        value = value > 99.0 ? 0.0 : value + 1.0;
        described.params[0]->setConstant(value);
        QCoreApplication::processEvents();
    }
    state.counters["repaints"] =
        benchmark::Counter(window.canvas().repaintCount() - before, benchmark::Counter::kAvgIterations);
}

BENCHMARK(generatePanel)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);
BENCHMARK(makeObjects)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);
BENCHMARK(makeNativeForm)->Arg(1000)->Unit(benchmark::kMicrosecond);
BENCHMARK(showGenerated)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(showNativeForm)->Arg(100)->Unit(benchmark::kMillisecond);
BENCHMARK(editGenerated)->Arg(10)->Arg(1000)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace oribund

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const oribund::qt::SkinApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
