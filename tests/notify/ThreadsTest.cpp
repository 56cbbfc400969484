#include "oribund/host/notify/MethodCallback.h"

#include <gtest/gtest.h>

#include <atomic>
#include <latch>
#include <memory>
#include <thread>
#include <vector>

using namespace oribund;

namespace
{

struct Ping {
};

class Counter
{
public:
    int hear(const Ping&)
    {
        heard.fetch_add(1, std::memory_order_relaxed);
        return 0;
    }

    std::atomic<int> heard{0};
    MethodCallback<Counter, Ping, int> callback{this, &Counter::hear};
};

} // namespace

TEST(Threads, RegisteringAndLeavingKeepsTheListWhole)
{
    Notifier<Ping> notifier;
    Counter constant;
    constant.callback.attach(notifier);
    std::vector<std::thread> threads;
    std::vector<std::unique_ptr<Counter>> stayed(4);
    std::latch ready(4);
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&notifier, &ready, &mine = stayed[t]] {
            ready.arrive_and_wait();
            for (int i = 0; i < 20000; ++i) {
                mine = std::make_unique<Counter>();
                mine->callback.attach(notifier);
                Counter passing;
                passing.callback.attach(notifier);
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    notifier.notify({});
    EXPECT_EQ(constant.heard, 1);
    for (const auto& counter : stayed)
        EXPECT_EQ(counter->heard, 1);
}

TEST(Threads, RegisteringIsSafeWhileAnotherThreadNotifies)
{
    Notifier<Ping> notifier;
    std::vector<std::unique_ptr<Counter>> counters;
    for (int i = 0; i < 2000; ++i)
        counters.push_back(std::make_unique<Counter>());
    std::atomic<bool> done{false};
    std::thread registering([&] {
        for (const auto& counter : counters)
            counter->callback.attach(notifier);
        done = true;
    });
    while (!done)
        notifier.notify({});
    registering.join();
    std::vector<int> before;
    for (const auto& counter : counters)
        before.push_back(counter->heard);
    notifier.notify({});
    for (std::size_t i = 0; i < counters.size(); ++i)
        ASSERT_EQ(counters[i]->heard, before[i] + 1) << i;
    // Each registration is heard from some notification on, so that the earlier ones have heard no less.
    for (std::size_t i = 1; i < counters.size(); ++i)
        ASSERT_GE(before[i - 1], before[i]) << i;
}

TEST(Threads, LeavingANotifierThatIsBeingDestroyedIsSafe)
{
    for (int round = 0; round < 500; ++round) {
        auto notifier = std::make_unique<Notifier<Ping>>();
        std::vector<std::unique_ptr<Counter>> counters;
        for (int i = 0; i < 8; ++i) {
            counters.push_back(std::make_unique<Counter>());
            counters.back()->callback.attach(*notifier);
        }
        std::thread leaving([&counters] { counters.clear(); });
        notifier.reset();
        leaving.join();
        ASSERT_TRUE(counters.empty());
    }
}
