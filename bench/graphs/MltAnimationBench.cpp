#include "bench/graphs/Keys.h"

#include <benchmark/benchmark.h>

// Plain C headers.
extern "C" {
#include <framework/mlt_animation.h>
#include <framework/mlt_property.h>
}

#include <memory>

namespace
{

struct CloseAnimation {
    void operator()(mlt_animation_s* animation) const { mlt_animation_close(animation); }
};

struct CloseProperty {
    void operator()(mlt_property_s* property) const { mlt_property_close(property); }
};

/** An animation over whole frames, ten for each keyframe. */
class MltCurve
{
public:
    MltCurve(int count, mlt_keyframe_type type)
        : animation_(mlt_animation_new())
        , property_(mlt_property_init())
        , length_(count * 10)
    {
        mlt_animation_set_length(animation_.get(), length_);
        const auto keyframes = bench::keyframes(count, bench::Shape::Straight);
        // From the end, as the list is searched from its start.
        for (int i = count - 1; i >= 0; --i)
            set(i, keyframes[static_cast<std::size_t>(i)].value, type);
    }

    void set(int index, double value, mlt_keyframe_type type)
    {
        mlt_property_set_double(property_.get(), value);
        mlt_animation_item_s item{};
        item.is_key = 1;
        item.frame = index * 10;
        item.property = property_.get();
        item.keyframe_type = type;
        mlt_animation_insert(animation_.get(), &item);
    }

    double evaluate(double time)
    {
        mlt_animation_item_s item{};
        item.property = property_.get();
        mlt_animation_get_item(animation_.get(), &item, static_cast<int>(time * length_));
        return mlt_property_get_double(property_.get(), 25.0, nullptr);
    }

private:
    std::unique_ptr<mlt_animation_s, CloseAnimation> animation_;
    std::unique_ptr<mlt_property_s, CloseProperty> property_;
    int length_;
};

void evaluateMlt(benchmark::State& state, mlt_keyframe_type type)
{
    MltCurve curve(static_cast<int>(state.range(0)), type);
    const auto times = bench::randomTimes();
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(curve.evaluate(times[i++ % times.size()]));
}

void setExistingMlt(benchmark::State& state)
{
    MltCurve curve(static_cast<int>(state.range(0)), mlt_keyframe_linear);
    const auto order = bench::randomOrder(static_cast<std::size_t>(state.range(0)));
    std::size_t i = 0;
    double value = 0.0;
    for (auto _ : state)
        curve.set(static_cast<int>(order[i++ % order.size()]), value += 1e-6, mlt_keyframe_linear);
}

} // namespace

BENCHMARK_CAPTURE(evaluateMlt, straight, mlt_keyframe_linear)->Arg(1000)->Arg(10000);
BENCHMARK_CAPTURE(evaluateMlt, smooth, mlt_keyframe_smooth)->Arg(1000)->Arg(10000);
BENCHMARK(setExistingMlt)->Arg(1000);
