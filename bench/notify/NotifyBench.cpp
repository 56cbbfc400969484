#include "bench/notify/AllocationCount.h"
#include "bench/notify/PointerPeer.h"
#include "oribund/host/notify/MethodCallback.h"
#include "oribund/host/notify/ValClient.h"
#include "oribund/host/notify/ValServer.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

using namespace oribund;

namespace
{

using Event = ValServerEvent<double>;

/** Ours: each observer has one callback in it. */
class Observer
{
public:
    explicit Observer(ValServer<double>& server) { callback_.attach(server.notifier()); }

private:
    int onValue(const Event& event)
    {
        total_ += *event.value;
        return 0;
    }

    double total_ = 0.0;
    MethodCallback<Observer, Event> callback_{this, &Observer::onValue};
};

/** Ours, as the panels use it most: a client that is told unless it is suspended. */
class Client : public ValClient<double>
{
public:
    using ValClient<double>::ValClient;

protected:
    void valChangedNtfy(const Event& event) override { total_ += *event.value; }

private:
    double total_ = 0.0;
};

/** Changes a server's value, which `k` observers hear; `State::range(0)` is k. */
template <class Server, class Hearer>
void changeValue(benchmark::State& state, Server& server, auto&& makeHearer)
{
    std::vector<std::unique_ptr<Hearer>> hearers;
    for (int i = 0; i < state.range(0); ++i)
        hearers.push_back(makeHearer(server));
    double value = 0.0;
    const std::size_t before = bench::allocationCount();
    for (auto _ : state) {
        value += 1.0;
        benchmark::DoNotOptimize(server.set(value));
    }
    state.counters["allocs"] = static_cast<double>(bench::allocationCount() - before);
}

void valServerToCallbacks(benchmark::State& state)
{
    ValServer<double> server;
    changeValue<ValServer<double>, Observer>(state, server, [](auto& s) { return std::make_unique<Observer>(s); });
}

void valServerToClients(benchmark::State& state)
{
    ValServer<double> server;
    changeValue<ValServer<double>, Client>(state, server, [](auto& s) { return std::make_unique<Client>(&s); });
}

void pointerVector(benchmark::State& state)
{
    PointerServer server;
    changeValue<PointerServer, Listener>(state, server, makePointerListener);
}

/** Registering with a server that has 100 observers already, and leaving it. */
void attachAndDetach(benchmark::State& state)
{
    ValServer<double> server;
    std::vector<std::unique_ptr<Observer>> others;
    for (int i = 0; i < 100; ++i)
        others.push_back(std::make_unique<Observer>(server));
    const std::size_t before = bench::allocationCount();
    for (auto _ : state) {
        Observer observer(server);
        benchmark::DoNotOptimize(observer);
    }
    state.counters["allocs"] = static_cast<double>(bench::allocationCount() - before);
}

BENCHMARK(valServerToCallbacks)->Arg(1)->Arg(10)->Arg(100);
BENCHMARK(valServerToClients)->Arg(1)->Arg(10)->Arg(100);
BENCHMARK(pointerVector)->Arg(1)->Arg(10)->Arg(100);
BENCHMARK(attachAndDetach);

} // namespace
