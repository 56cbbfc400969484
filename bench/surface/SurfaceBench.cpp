// A panel of float rows on one surface, beside a hand-written form of Qt's widgets: made, laid out and shown; scrolled
// by a notch of the wheel; edited.

#include "bench/surface/NativeForm.h"
#include "skin/PanelSurface.h"
#include "skin/SkinApplication.h"
#include "tests/support/FakeView.h"
#include "tests/support/TestHost.h"

#include "oribund/controls/rows/KeyframeFloatCtrlsBase.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/layout/WidgetGroup.h"
#include "oribund/host/toolkit/scroll/ScrollPanel.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QScrollBar>

#include <malloc.h>

#include <memory>
#include <vector>

namespace oribund
{
namespace
{

using bench::NativeForm;
using Number = EffectValParam<double>;

constexpr unsigned short kWidth = 420;
constexpr unsigned short kLabelWidth = 100;
constexpr int kHeight = 600;
constexpr int kNotch = 60;

/** An effect with so many numbers. */
class Effect
{
public:
    explicit Effect(int count)
    {
        for (int i = 0; i < count; ++i) {
            ParamInfo info;
            info.id = IdStamp(1, 0, i);
            info.name = "p";
            params.push_back(Kt::makePtr<Number>(info, 50.0, 0.0, 100.0));
            effect->addParam(params.back());
        }
    }

    test::TestHost host;
    test::FakeVob vob;
    Kt::Ptr<EffectInstance> effect = Kt::makePtr<EffectInstance>(IdStamp(1, 0, 0), String("bench"), WString(L"Bench"));
    FXViewHandle handle = vob.add(effect, 0.0, 10.0);
    std::vector<Kt::Ptr<Number>> params;
};

/** Its panel, in a window. */
class Panel
{
public:
    explicit Panel(const Effect& effect)
    {
        Canvas* const canvas = &surface_.canvas();
        auto group = std::make_unique<WidgetGroup>(WidgetGroup::InitArgs(kWidth, 0, canvas));
        {
            const LayoutHold hold(*group);
            int y = 0;
            for (const auto& param : effect.params) {
                group->addWidget(
                    std::make_unique<KeyframeFloatCtrlsBase>(effect.handle, param, kWidth, kLabelWidth, 0, canvas),
                    Glob::UserTopLeft(0, y));
                y += UifStd::getRowHeight();
            }
        }
        auto scroll = std::make_unique<ScrollPanel>(GlobCreationInfo(kWidth, kHeight, canvas));
        scroll_ = scroll.get();
        scroll_->setContent(std::move(group));
        surface_.setPanel(std::move(scroll), qt::PanelSurface::Fits::Both);
        show(surface_);
    }

    static void show(QWidget& window)
    {
        window.resize(kWidth, kHeight);
        window.show();
        QCoreApplication::processEvents();
    }

    void scroll()
    {
        if (!scroll_->setScroll(scroll_->getScroll() + kNotch))
            scroll_->setScroll(0);
        QCoreApplication::processEvents();
    }

private:
    qt::PanelSurface surface_;
    ScrollPanel* scroll_;
};

void showPanel(benchmark::State& state)
{
    const Effect effect(static_cast<int>(state.range(0)));
    const std::size_t before = mallinfo2().uordblks;
    std::size_t used = 0;
    for (auto _ : state) {
        const Panel panel(effect);
        state.PauseTiming();
        used = mallinfo2().uordblks - before;
        state.ResumeTiming();
    }
    state.counters["bytesPerRow"] = static_cast<double>(used) / static_cast<double>(state.range(0));
}

void showForm(benchmark::State& state)
{
    for (auto _ : state) {
        NativeForm form(static_cast<int>(state.range(0)));
        Panel::show(form);
    }
}

void scrollPanel(benchmark::State& state)
{
    const Effect effect(static_cast<int>(state.range(0)));
    Panel panel(effect);
    for (auto _ : state)
        panel.scroll();
}

void scrollForm(benchmark::State& state)
{
    NativeForm form(static_cast<int>(state.range(0)));
    Panel::show(form);
    QScrollBar& bar = *form.verticalScrollBar();
    for (auto _ : state) {
        bar.setValue(bar.value() == bar.maximum() ? 0 : bar.value() + kNotch);
        QCoreApplication::processEvents();
    }
}

template <class Change>
void edit(benchmark::State& state, Change change)
{
    double value = 0.0;
    for (auto _ : state) {
        value = value > 99.0 ? 0.0 : value + 1.0;
        change(value);
        QCoreApplication::processEvents();
    }
}

void editPanel(benchmark::State& state)
{
    const Effect effect(static_cast<int>(state.range(0)));
    const Panel panel(effect);
    edit(state, [&](double value) { effect.params[0]->setConstant(value); });
}

void editForm(benchmark::State& state)
{
    NativeForm form(static_cast<int>(state.range(0)));
    Panel::show(form);
    edit(state, [&](double value) { form.edit(value); });
}

BENCHMARK(showPanel)->Arg(10)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(showForm)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(scrollPanel)->Arg(100)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(scrollForm)->Arg(100)->Unit(benchmark::kMicrosecond);
BENCHMARK(editPanel)->Arg(100)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(editForm)->Arg(100)->Unit(benchmark::kMicrosecond);

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
