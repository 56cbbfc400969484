#include "tests/engine/protocol/RandomMessage.h"
#include "workbench/engine/protocol/MessageChannel.h"
#include "workbench/engine/protocol/MessageCodec.h"

#include <gtest/gtest.h>

#include <limits>
#include <numeric>
#include <sys/socket.h>
#include <thread>

namespace
{

using namespace workbench;
using namespace std::chrono_literals;
using Bytes = std::vector<std::uint8_t>;
using Outcome = MessageChannel::Outcome;

/** What was sent comes back, a part of it or more than it is nothing, and whatever else can be read says the same. */
template <class Message, class Decode>
void checkRoundTrips(Decode decode)
{
    for (unsigned seed = 0; seed < 300; ++seed) {
        Message message;
        RandomMessage fill(seed);
        fill(message);
        Bytes bytes = encode(message);
        const std::optional<Message> read = decode(bytes);
        ASSERT_TRUE(read) << seed;
        ASSERT_EQ(*read, message) << seed;
        for (std::size_t size = 0; size < bytes.size(); size += 1 + size / 16)
            ASSERT_FALSE(decode(std::span(bytes).first(size))) << seed;
        std::mt19937 random(seed);
        for (int change = 0; change < 50; ++change) {
            Bytes changed = bytes;
            changed[random() % changed.size()] ^= static_cast<std::uint8_t>(1U << random() % 8);
            const auto other = decode(changed);
            ASSERT_TRUE(!other || encode(*other) == changed) << seed;
        }
        bytes.push_back(0);
        ASSERT_FALSE(decode(bytes)) << seed;
    }
}

TEST(MessageCodec, everyMessageComesBackAsItWas)
{
    checkRoundTrips<Request>([](std::span<const std::uint8_t> bytes) { return decodeRequest(bytes); });
    checkRoundTrips<Event>([](std::span<const std::uint8_t> bytes) { return decodeEvent(bytes); });
}

TEST(MessageCodec, refusesWhatCannotBe)
{
    MediaInfo noRate;
    noRate.fpsDenominator = 0;
    EffectDescription noNumber;
    noNumber.params.emplace_back().maximum = std::numeric_limits<double>::quiet_NaN();
    EffectDescription noItem;
    noItem.params.emplace_back().items.resize(2);
    noItem.params.front().defaultItem = 2;
    const std::vector<Event> impossible = {
        event::FrameReady{0, 0, 10, 0, 0},
        event::FrameReady{0, 10, 1 << 20, 0, 0},
        event::FrameReady{-1, 10, 10, 0, 0},
        event::Position{-1},
        event::ExportProgress{11, 10},
        event::MediaProbed{{noRate, {}, {}}},
        event::CatalogueRead{{noNumber}, {}, {}},
        event::CatalogueRead{{noItem}, {}, {}},
        event::Problem{{static_cast<EngineProblem::Kind>(99), {}, {}, {}}},
    };
    for (const Event& event : impossible)
        EXPECT_FALSE(decodeEvent(encode(event))) << event.index();

    // More of something than there are bytes takes no memory.
    EXPECT_FALSE(decodeRequest(Bytes{2, 0xff, 0xff, 0xff, 0xff}));
}

/** The two ends of a connection; the far one as a plain socket. */
struct Connection {
    explicit Connection(std::size_t largest = MessageChannel::kLargestMessage)
        : ends(MessageChannel::makePair().value())
        , near(std::move(ends.first), largest)
    {
    }

    void write(const Bytes& bytes) const
    {
        ASSERT_EQ(::send(ends.second.number(), bytes.data(), bytes.size(), 0), static_cast<ssize_t>(bytes.size()));
    }

    std::pair<Descriptor, Descriptor> ends;
    MessageChannel near;
    Bytes message;
};

TEST(MessageChannel, carriesWholeMessages)
{
    Connection connection;
    MessageChannel far(std::move(connection.ends.second));
    Bytes large(5'000'000);
    std::iota(large.begin(), large.end(), std::uint8_t{0});
    std::thread sender([&] {
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(far.send(large, 5s), Outcome::Done);
        EXPECT_EQ(far.send({}, 5s), Outcome::Done);
        far.shutDown();
    });
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(connection.near.receive(connection.message, 5s), Outcome::Done);
        EXPECT_EQ(connection.message, large);
    }
    EXPECT_EQ(connection.near.receive(connection.message, 5s), Outcome::Done);
    EXPECT_TRUE(connection.message.empty());
    sender.join();
    EXPECT_EQ(connection.near.receive(connection.message, 5s), Outcome::Closed);
    EXPECT_EQ(connection.near.send(large, 5s), Outcome::Closed);
}

TEST(MessageChannel, goesOnWithAMessageThatCameInParts)
{
    Connection connection;
    EXPECT_EQ(connection.near.receive(connection.message, 0ms), Outcome::TimedOut);
    connection.write({3, 0});
    EXPECT_EQ(connection.near.receive(connection.message, 1ms), Outcome::TimedOut);
    connection.write({0, 0, 'a'});
    EXPECT_EQ(connection.near.receive(connection.message, 1ms), Outcome::TimedOut);
    connection.write({'b', 'c', 0, 0, 0, 0});
    EXPECT_EQ(connection.near.receive(connection.message, 1ms), Outcome::Done);
    EXPECT_EQ(connection.message, (Bytes{'a', 'b', 'c'}));
    EXPECT_EQ(connection.near.receive(connection.message, 1ms), Outcome::Done);
    EXPECT_TRUE(connection.message.empty());
}

TEST(MessageChannel, endsWithOneWhoSendsTooMuchOrReadsNothing)
{
    Connection connection(1000);
    EXPECT_EQ(connection.near.send(Bytes(1001), 1s), Outcome::Broken);
    connection.write({0xe9, 3, 0, 0});
    EXPECT_EQ(connection.near.receive(connection.message, 1s), Outcome::Broken);

    Connection deaf;
    EXPECT_EQ(deaf.near.send(Bytes(50'000'000), 20ms), Outcome::TimedOut);
    deaf.ends.second.close();
    EXPECT_EQ(deaf.near.receive(deaf.message, 1s), Outcome::Closed);
}

} // namespace
