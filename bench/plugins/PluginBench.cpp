// One picture of 1080p, in one thread: the effects of our own, and one of the system's that turns hues.

#include "tests/plugins/LoadedPlugin.h"

#include <benchmark/benchmark.h>

#include <random>
#include <utility>

namespace workbench
{
namespace
{

constexpr unsigned kWidth = 1920;
constexpr unsigned kHeight = 1080;

/** Pixels by chance: none of them lets a short cut be taken. */
void change(benchmark::State& state, const char* file, const std::vector<std::pair<int, double>>& settings)
{
    std::vector<std::uint32_t> from(std::size_t{kWidth} * kHeight);
    std::mt19937 chance(3);
    for (std::uint32_t& pixel : from)
        pixel = static_cast<std::uint32_t>(chance());
    std::vector<std::uint32_t> to(from.size());
    try {
        const LoadedPlugin plugin(file);
        PluginUse use(plugin, kWidth, kHeight);
        for (const auto& [index, value] : settings)
            use.set(index, value);
        for ([[maybe_unused]] auto _ : state) {
            use.update(from, to);
            benchmark::DoNotOptimize(to.data());
            benchmark::ClobberMemory();
        }
    } catch (const std::runtime_error& missing) {
        state.SkipWithError(missing.what());
    }
}

void hueOfTheSystem(benchmark::State& state)
{
    change(state, "/usr/lib/frei0r-1/hueshift0r.so", {{0, 0.3}});
}

void selectiveColour(benchmark::State& state)
{
    change(state, ORIBUND_SELECTIVE_COLOUR, {{0, 0.1}, {1, 0.2}, {2, 0.5}, {3, 0.6}, {12, 0.7}, {13, 0.8}, {14, 0.6}});
}

void selectiveColourMatte(benchmark::State& state)
{
    change(state, ORIBUND_SELECTIVE_COLOUR, {{0, 0.1}, {1, 0.2}, {2, 0.5}, {3, 0.6}, {15, 1.0}});
}

void tonalZones(benchmark::State& state)
{
    change(state, ORIBUND_TONAL_ZONES, {{4, 0.7}, {6, 0.2}, {8, 0.8}});
}

BENCHMARK(hueOfTheSystem)->Unit(benchmark::kMillisecond);
BENCHMARK(selectiveColour)->Unit(benchmark::kMillisecond);
BENCHMARK(selectiveColourMatte)->Unit(benchmark::kMillisecond);
BENCHMARK(tonalZones)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace workbench
