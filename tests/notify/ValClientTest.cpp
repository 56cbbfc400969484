#include "oribund/host/notify/ValClient.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

using namespace oribund;

namespace
{

class Client : public ValClient<double>
{
public:
    using ValClient::ValClient;
    using ValClient::operator=;

    int changes = 0;
    int announcements = 0;
    double last = 0.0;

protected:
    void valChangedNtfy(const ValServerEvent<double>& event) override
    {
        ++changes;
        last = *event.value;
    }

    void valPreChangedNtfy(const ValServerEvent<double>&) override { ++announcements; }
};

class WholeServer : public ValServer<double>
{
public:
    bool set(const double& value, ChangeKind kind) override { return ValServer::set(std::min(value, 10.0), kind); }
};

} // namespace

TEST(ValClient, UnboundReadsTheDefaultAndIgnoresWrites)
{
    Client client;
    EXPECT_EQ(client.getValServer(), nullptr);
    EXPECT_EQ(client, 0.0);
    client.setServerValue(3.0);
    EXPECT_EQ((client = 4.0), 4.0); // the argument comes back
    EXPECT_EQ(client.getServerValue(), 0.0);
}

TEST(ValClient, WritesReachTheServerAndItsOtherClients)
{
    WholeServer server;
    Client a(&server);
    Client b(&server);
    a.setServerValue(2.0);
    EXPECT_EQ(b, 2.0);
    EXPECT_EQ(b.last, 2.0);
    EXPECT_EQ(a.changes, 1);     // the writer hears it too
    EXPECT_EQ((b = 25.0), 10.0); // the server limits
    EXPECT_EQ(a, 10.0);
    server.preChange(ChangeKind::Single);
    EXPECT_EQ(a.announcements, 1);
    EXPECT_EQ(a.changes, 2);
}

TEST(ValClient, SuspensionsNest)
{
    ValServer<double> server;
    Client client(&server);
    client.suspend();
    client.suspend();
    server.preChange(ChangeKind::Single);
    client.resume();
    server.set(2.0);
    EXPECT_EQ(client.changes + client.announcements, 0);
    EXPECT_EQ(client, 2.0) << "reading works all the same";
    client.resume();
    server.set(3.0);
    EXPECT_EQ(client.changes, 1);
}

TEST(ValClient, RegisteringElsewhereDropsTheFirstServer)
{
    ValServer<double> first(1.0);
    ValServer<double> second(2.0);
    Client client(&first);
    client.registerWith(&second);
    first.set(9.0);
    EXPECT_EQ(client, 2.0);
    EXPECT_EQ(client.changes, 0);
    client.registerWith(nullptr);
    second.set(4.0);
    EXPECT_EQ(client.changes, 0);
}

TEST(ValClient, CopiesRegisterForThemselves)
{
    ValServer<double> server(1.0);
    auto original = std::make_unique<Client>(&server);
    original->setClientId({1, 2, 3});
    original->suspend();
    Client copy(*original);
    Client assigned;
    assigned = *original;
    EXPECT_FALSE(copy.clientId().valid());
    original.reset();
    server.set(5.0);
    EXPECT_EQ(copy.changes, 1);
    EXPECT_EQ(assigned.last, 5.0);
}

TEST(ValClient, ServersEndUnbindsWithoutACall)
{
    auto server = std::make_unique<ValServer<double>>(7.0);
    Client client(server.get());
    Client suspended(server.get());
    suspended.suspend();
    server.reset();
    EXPECT_EQ(client.changes + client.announcements, 0);
    for (Client* each : {&client, &suspended}) {
        EXPECT_EQ(each->getValServer(), nullptr);
        EXPECT_EQ(*each, 0.0);
        each->setServerValue(1.0);
    }
    ValServer<double> next(8.0);
    client.registerWith(&next);
    EXPECT_EQ(client, 8.0);
}
