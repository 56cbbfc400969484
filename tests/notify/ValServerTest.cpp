#include "oribund/host/notify/ValServer.h"
#include "oribund/host/notify/MethodCallback.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <vector>

using namespace oribund;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

using Event = ValServerEvent<double>;

struct Heard {
    ValEventKind kind;
    ChangeKind change;
    double value;

    bool operator==(const Heard&) const = default;
};

class ServerObserver
{
public:
    explicit ServerObserver(ValServer<double>& server) { callback.attach(server.notifier()); }

    std::vector<Heard> heard;
    std::function<void(const Event&)> then = [](const Event&) {};
    MethodCallback<ServerObserver, Event, int> callback{this, &ServerObserver::hear};

private:
    int hear(const Event& event)
    {
        heard.push_back({event.kind, event.change, *event.value});
        then(event);
        return 0;
    }
};

/** Takes what lies between 0 and 1. */
class UnitServer : public ValServer<double>
{
public:
    bool set(const double& value, ChangeKind kind) override
    {
        return ValServer::set(std::clamp(value, 0.0, 1.0), kind);
    }
};

} // namespace

TEST(ValServer, TellsOfChangesOnly)
{
    ValServer<double> server(1.0);
    ServerObserver observer(server);
    EXPECT_FALSE(server.set(1.0));
    EXPECT_THAT(observer.heard, IsEmpty());
    server.preChange(ChangeKind::Start);
    EXPECT_TRUE(server.set(2.0, ChangeKind::Start));
    EXPECT_TRUE(server.set(3.0, ChangeKind::Continuation));
    EXPECT_FALSE(server.set(3.0, ChangeKind::Continuation));
    server.setAlways(3.0);
    EXPECT_THAT(observer.heard, ElementsAre(Heard{ValEventKind::AboutToChange, ChangeKind::Start, 1.0},
                                            Heard{ValEventKind::Changed, ChangeKind::Start, 2.0},
                                            Heard{ValEventKind::Changed, ChangeKind::Continuation, 3.0},
                                            Heard{ValEventKind::Changed, ChangeKind::Single, 3.0}));
}

TEST(ValServer, HoldsTheNewValueBeforeAnyoneIsTold)
{
    ValServer<double> server;
    ServerObserver observer(server);
    double seen = 0.0;
    observer.then = [&](const Event&) { seen = server.get(); };
    server.set(4.0);
    EXPECT_EQ(seen, 4.0);
}

TEST(ValServer, LaterObserversSeeWhatAnEarlierOneSet)
{
    ValServer<double> server;
    ServerObserver first(server);
    ServerObserver second(server);
    first.then = [&](const Event& event) {
        if (*event.value > 10.0)
            server.set(10.0);
    };
    server.set(12.0);
    EXPECT_EQ(server.get(), 10.0);
    for (const Heard& heard : second.heard)
        EXPECT_EQ(heard.value, 10.0);
    EXPECT_EQ(second.heard.size(), 2u);
}

TEST(ValServer, SaysThatItGoes)
{
    auto server = std::make_unique<ValServer<double>>(5.0);
    ServerObserver observer(*server);
    ServerObserver former(*server);
    former.callback.detach();
    server.reset();
    EXPECT_THAT(observer.heard, ElementsAre(Heard{ValEventKind::ServerGone, ChangeKind::Single, 5.0}));
    EXPECT_THAT(former.heard, IsEmpty());
    EXPECT_FALSE(observer.callback.attached());
}

TEST(ValServer, MayBeDestroyedByAnObserver)
{
    auto server = std::make_unique<ValServer<double>>();
    ServerObserver first(*server);
    ServerObserver second(*server);
    first.then = [&](const Event& event) {
        if (event.kind == ValEventKind::Changed)
            server.reset();
    };
    server->set(1.0);
    EXPECT_EQ(server, nullptr);
    // The second hears of the end, but not of a value that is gone.
    EXPECT_THAT(second.heard, ElementsAre(Heard{ValEventKind::ServerGone, ChangeKind::Single, 1.0}));
}

TEST(ValServer, DerivedServersLimitWhatTheyTake)
{
    UnitServer server;
    ServerObserver observer(server);
    ValServer<double>& base = server;
    EXPECT_TRUE(base.set(7.0));
    EXPECT_EQ(base.get(), 1.0);
    EXPECT_FALSE(base.set(8.0));
    EXPECT_EQ(observer.heard.size(), 1u);
}

TEST(ChangeKind, HasTheAgreedNumbers)
{
    // Hosts exchange these as numbers.
    EXPECT_EQ(static_cast<unsigned>(ChangeKind::Start), 0u);
    EXPECT_EQ(static_cast<unsigned>(ChangeKind::Single), 3u);
    EXPECT_EQ(static_cast<unsigned>(ChangeKind::Continuation), 4u);
    EXPECT_TRUE(opensChange(ChangeKind::Start));
    EXPECT_TRUE(opensChange(ChangeKind::Single));
    EXPECT_FALSE(opensChange(ChangeKind::Continuation));
}
