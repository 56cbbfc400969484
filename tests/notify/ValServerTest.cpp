#include "oribund/host/notify/ValServer.h"
#include "tests/support/Listener.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

using namespace oribund;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

using Event = ValServerEvent<double>;
using ServerListener = test::Listener<Event>;
using Heard = test::Kept<Event>::Type;

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
    const ServerListener observer(server.notifier());
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

TEST(ValServer, LaterObserversSeeWhatAnEarlierOneSet)
{
    ValServer<double> server;
    const ServerListener first(server.notifier(), [&](const Event& event) {
        EXPECT_EQ(server.get(), *event.value);
        if (*event.value > 10.0)
            server.set(10.0);
    });
    const ServerListener second(server.notifier());
    server.set(12.0);
    EXPECT_EQ(server.get(), 10.0);
    const Heard ten{ValEventKind::Changed, ChangeKind::Single, 10.0};
    EXPECT_THAT(second.heard, ElementsAre(ten, ten));
}

TEST(ValServer, SaysThatItGoes)
{
    auto server = std::make_unique<ValServer<double>>(5.0);
    const ServerListener observer(server->notifier());
    ServerListener former(server->notifier());
    former.callback.detach();
    server.reset();
    EXPECT_THAT(observer.heard, ElementsAre(Heard{ValEventKind::ServerGone, ChangeKind::Single, 5.0}));
    EXPECT_THAT(former.heard, IsEmpty());
    EXPECT_FALSE(observer.callback.attached());
}

TEST(ValServer, MayBeDestroyedByAnObserver)
{
    auto server = std::make_unique<ValServer<double>>();
    const ServerListener first(server->notifier(), [&](const Event& event) {
        if (event.kind == ValEventKind::Changed)
            server.reset();
    });
    const ServerListener second(server->notifier());
    server->set(1.0);
    EXPECT_EQ(server, nullptr);
    // The second hears of the end, but not of a value that is gone.
    EXPECT_THAT(second.heard, ElementsAre(Heard{ValEventKind::ServerGone, ChangeKind::Single, 1.0}));
}

TEST(ValServer, DerivedServersLimitWhatTheyTake)
{
    UnitServer server;
    const ServerListener observer(server.notifier());
    ValServer<double>& base = server;
    EXPECT_TRUE(base.set(7.0));
    EXPECT_EQ(base.get(), 1.0);
    EXPECT_FALSE(base.set(8.0));
    EXPECT_EQ(observer.count(), 1u);
}
