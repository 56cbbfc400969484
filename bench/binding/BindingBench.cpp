// One edit of an animated parameter through an adaptor that feeds ten widgets, beside what the widgets do anyway.

#include "bench/notify/AllocationCount.h"
#include "tests/support/FakeView.h"

#include "oribund/controls/binding/EffectValParamAdaptor.h"
#include "oribund/host/base/Numeric.h"
#include "oribund/host/toolkit/entries/ValTextBox.h"
#include "oribund/host/toolkit/widgets/ValSlider.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace oribund
{
namespace
{

constexpr int kKeyframes = 1000;
constexpr int kWidgets = 10;

/** An effect with one animated parameter, on an edit whose current time is on one of its keyframes. */
struct AnimatedEffect {
    AnimatedEffect()
    {
        ParamInfo info;
        info.id = IdStamp(1, 0, 1);
        param = Kt::makePtr<EffectValParam<double>>(info, 0.0);
        effect->addParam(param);
        handle = vob.add(effect, 0.0, 1.0);
        param->setFunctionType(EffectValParamFnType::Keyframed, 0.0);
        const GraphBatch batch(*param->graph(), BatchReason::AddKeyframe, BatchReason::EndAddKeyframe,
                               ChangeKind::Single);
        for (int i = 1; i < kKeyframes; ++i)
            param->addKeyframeAt(i / static_cast<double>(kKeyframes - 1), i);
    }

    void moveToKeyframe(int index) { vob.setCurrentTime(param->graph()->timeAt(index)); }

    test::FakeVob vob;
    Kt::Ptr<EffectInstance> effect = Kt::makePtr<EffectInstance>(IdStamp(1, 0, 0), String("bench"), WString(L"Bench"));
    Kt::Ptr<EffectValParam<double>> param;
    FXViewHandle handle;
};

/** Edits through the first of ten widgets of one kind. */
template <class Adaptor, class Widget>
void editThrough(benchmark::State& state, const Kt::Ptr<Adaptor>& adaptor,
                 std::vector<std::unique_ptr<Widget>>& widgets)
{
    using Value = typename Adaptor::ValueType;
    for (auto& widget : widgets)
        widget->setDataAdaptor(Kt::Ptr<ValAdaptorBase<Value>>(adaptor));
    std::vector<Value> values;
    for (int i = 0; i < 64; ++i)
        values.push_back(ParamConversion<Value, Value>::toWidget(reinterpretValType<Value>(i * 0.25)));
    std::size_t next = 0;
    const auto allocations = ::bench::allocationCount();
    for (auto _ : state) {
        const RedrawHold hold;
        benchmark::DoNotOptimize(adaptor->requestSetValue(values[next], ChangeKind::Continuation));
        next = (next + 1) % values.size();
    }
    state.counters["allocations"] = benchmark::Counter(static_cast<double>(::bench::allocationCount() - allocations),
                                                       benchmark::Counter::kAvgIterations);
}

void editWithTenSliders(benchmark::State& state)
{
    AnimatedEffect animated;
    animated.moveToKeyframe(kKeyframes / 2);
    std::vector<std::unique_ptr<ValSlider>> sliders;
    for (int i = 0; i < kWidgets; ++i)
        sliders.push_back(std::make_unique<ValSlider>(Slider::InitArgs(200, 20)));
    editThrough(state, Kt::makePtr<FloatAdaptor>(animated.handle, EffectValParamAccessor<double>(*animated.param)),
                sliders);
}

BENCHMARK(editWithTenSliders);

void editWithTenEntries(benchmark::State& state)
{
    AnimatedEffect animated;
    animated.moveToKeyframe(kKeyframes / 2);
    std::vector<std::unique_ptr<ValTextBox>> entries;
    for (int i = 0; i < kWidgets; ++i)
        entries.push_back(std::make_unique<ValTextBox>(TextBox::InitArgs(200, 20)));
    editThrough(state, Kt::makePtr<FloatTextAdaptor>(animated.handle, FloatParamAccessor(*animated.param)), entries);
}

BENCHMARK(editWithTenEntries);

/** The work that no binding can avoid: the number as text, once, as the adaptor shares it with all entries. */
void formatOneText(benchmark::State& state)
{
    double value = 0.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(reinterpretValType<WString>(value));
        value = value < 16.0 ? value + 0.25 : 0.0;
    }
}

BENCHMARK(formatOneText);

/** A keyframe's value set on the curve itself, with nobody listening. */
void setKeyframeBare(benchmark::State& state)
{
    AnimatedEffect animated;
    double value = 0.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(animated.param->setKeyframeValueAt(kKeyframes / 2, value, ChangeKind::Continuation));
        value = value < 16.0 ? value + 0.25 : 0.0;
    }
}

BENCHMARK(setKeyframeBare);

} // namespace
} // namespace oribund
