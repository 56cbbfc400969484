#include "bench/notify/QtSignalBench.h"

#include "bench/notify/AllocationCount.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace
{

void qtSignalToSlots(benchmark::State& state)
{
    QtServer server;
    std::vector<std::unique_ptr<QtReceiver>> receivers;
    for (int i = 0; i < state.range(0); ++i) {
        receivers.push_back(std::make_unique<QtReceiver>());
        QObject::connect(&server, &QtServer::valueChanged, receivers.back().get(), &QtReceiver::onValue);
    }
    double value = 0.0;
    const std::size_t before = bench::allocationCount();
    for (auto _ : state) {
        value += 1.0;
        benchmark::DoNotOptimize(server.set(value));
    }
    state.counters["allocs"] = static_cast<double>(bench::allocationCount() - before);
}

BENCHMARK(qtSignalToSlots)->Arg(1)->Arg(10)->Arg(100);

} // namespace
