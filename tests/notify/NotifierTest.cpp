#include "tests/support/Listener.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

using namespace oribund;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

struct Message {
    int number = 0;
};

using Names = std::vector<std::string>;
using Observer = test::Listener<Message>;
using ObserverPtr = std::unique_ptr<Observer>;

/** Observers that write their names down for each message, and then do what a test wants. */
class NotifierTest : public testing::Test
{
protected:
    ObserverPtr make(const std::string& name, const Observer::Then& does = {})
    {
        return std::make_unique<Observer>(*notifier, [this, name, does](const Message& message) {
            heard.push_back(name);
            if (does)
                does(message);
        });
    }

    /** What is heard when one message is sent. */
    Names send()
    {
        heard.clear();
        notifier->notify({1});
        return heard;
    }

    Names heard;
    std::unique_ptr<Notifier<Message>> notifier = std::make_unique<Notifier<Message>>();
};

} // namespace

TEST_F(NotifierTest, TellsInTheOrderOfRegistration)
{
    EXPECT_THAT(send(), IsEmpty());
    auto a = make("a");
    auto b = make("b");
    auto c = make("c");
    EXPECT_THAT(send(), ElementsAre("a", "b", "c"));
    b->callback.detach();
    b->callback.detach();
    EXPECT_THAT(send(), ElementsAre("a", "c"));
    b->callback.attach(*notifier);
    a->callback.attach(*notifier); // again: to the end, and still heard once
    EXPECT_THAT(send(), ElementsAre("c", "b", "a"));
    Notifier<Message> other;
    c->callback.attach(other);
    EXPECT_THAT(send(), ElementsAre("b", "a")) << "it has left the first";
    other.notify({2});
    EXPECT_THAT(heard, ElementsAre("b", "a", "c"));
    a.reset();
    b.reset();
    EXPECT_FALSE(notifier->hasObservers());
}

TEST_F(NotifierTest, WhoGoesIsNotToldAndWhoComesHearsTheNextMessage)
{
    ObserverPtr late;
    ObserverPtr c;
    ObserverPtr a = make("a");
    ObserverPtr b = make("b", [&](const Message&) {
        late = make("late");
        a.reset();
        c.reset();
        b.reset();
    });
    c = make("c");
    EXPECT_THAT(send(), ElementsAre("a", "b"));
    EXPECT_THAT(send(), ElementsAre("late"));
}

TEST_F(NotifierTest, ObserverMayDestroyTheNotifier)
{
    const ObserverPtr a = make("a");
    const ObserverPtr b = make("b", [&](const Message& message) {
        if (message.number == 1)
            notifier->notify({2}); // the inner one is destroyed as well
        else
            notifier.reset();
    });
    const ObserverPtr c = make("c");
    notifier->notify({1});
    EXPECT_THAT(heard, ElementsAre("a", "b", "a", "b"));
    EXPECT_FALSE(a->callback.attached());
    notifier = std::make_unique<Notifier<Message>>();
    c->callback.attach(*notifier);
    EXPECT_THAT(send(), ElementsAre("c"));
}

TEST_F(NotifierTest, ANotifierInTheDestroyedOnesPlaceIsLeftAlone)
{
    std::optional<Notifier<Message>> here(std::in_place);
    bool innerDone = false;
    const Observer a(*here, [&](const Message& message) {
        if (message.number == 2) {
            here.emplace();
            return;
        }
        here->notify({2});
        innerDone = true;
        EXPECT_FALSE(here->notifying());
    });
    here->notify({1});
    EXPECT_TRUE(innerDone);
    EXPECT_FALSE(here->hasObservers());
}

TEST_F(NotifierTest, ExceptionOfAnObserverIsReportedAndTheOthersAreTold)
{
    static Names reported;
    NotifierBase::setExceptionReport([](const char* line) { reported.emplace_back(line); });
    const ObserverPtr a = make("a", [](const Message&) { throw std::runtime_error("no disk"); });
    const ObserverPtr b = make("b", [](const Message&) { throw 1; });
    const ObserverPtr c = make("c");
    EXPECT_THAT(send(), ElementsAre("a", "b", "c"));
    EXPECT_FALSE(notifier->notifying());
    NotifierBase::setExceptionReport(nullptr);
    EXPECT_THAT(reported, ElementsAre("An observer threw an exception: no disk", "An observer threw an exception."));
}

TEST_F(NotifierTest, FiltersByMessageType)
{
    auto& dictionary = NotifyMsgTypeDictionary::instance();
    const NotifyMsgType edited = dictionary.typeFor("edited");
    const NotifyMsgType closed = dictionary.typeFor("closed");
    EXPECT_EQ(dictionary.typeFor("edited"), edited);
    EXPECT_EQ(dictionary.typeFor("ValueChange"), dictionary.valueChange());
    EXPECT_EQ(dictionary.nameOf(closed), "closed");
    EXPECT_EQ(dictionary.nameOf(static_cast<NotifyMsgType>(99999)), "");

    const ObserverPtr any = make("any");
    const ObserverPtr a = make("a");
    const ObserverPtr b = make("b");
    a->callback.attach(*notifier, edited);
    b->callback.attach(*notifier, closed);
    notifier->notify({1}, edited);
    notifier->notify({2}, closed);
    EXPECT_THAT(heard, ElementsAre("any", "a", "any", "b"));
    EXPECT_THAT(send(), ElementsAre("any", "a", "b"));
}

namespace
{

/** Observers that do things at random while they are told, next to what by the rules ought to be heard. */
class Crowd
{
public:
    explicit Crowd(unsigned seed)
        : random_(seed)
    {
    }

    void run()
    {
        for (int i = 0; i < 12; ++i)
            join();
        for (int round = 0; round < 200; ++round) {
            budget_ = 6;
            tell();
            while (registered_.size() < 8)
                join();
        }
    }

private:
    /** A running notification: who is still to be told. */
    using Expected = std::vector<int>;

    void tell()
    {
        expected_.push_back(registered_);
        const std::size_t level = expected_.size();
        notifier_.notify({});
        ASSERT_EQ(expected_.size(), level);
        EXPECT_THAT(expected_.back(), IsEmpty());
        expected_.pop_back();
    }

    void heard(int id)
    {
        ASSERT_FALSE(expected_.empty());
        ASSERT_FALSE(expected_.back().empty());
        ASSERT_EQ(expected_.back().front(), id);
        expected_.back().erase(expected_.back().begin());
        if (budget_-- <= 0)
            return;
        switch (random_() % 6) {
        case 0:
            join();
            break;
        case 1:
        case 2:
            leave(registered_[random_() % registered_.size()]);
            break;
        case 3:
            tell();
            break;
        case 4:
            // Who leaves and comes back is new, even when it has not had its turn.
            forget(id);
            members_[id]->callback.attach(notifier_);
            registered_.push_back(id);
            break;
        default:
            leave(id);
            break;
        }
        if (registered_.empty())
            join();
    }

    void join()
    {
        const int id = static_cast<int>(members_.size());
        members_.push_back(std::make_unique<Observer>(notifier_, [this, id](const Message&) { heard(id); }));
        registered_.push_back(id);
    }

    void leave(int id)
    {
        members_[id].reset();
        forget(id);
    }

    void forget(int id)
    {
        std::erase(registered_, id);
        for (Expected& expected : expected_)
            std::erase(expected, id);
    }

    std::mt19937 random_;
    Notifier<Message> notifier_;
    std::vector<ObserverPtr> members_;
    std::vector<int> registered_;
    std::vector<Expected> expected_;
    int budget_ = 0;
};

} // namespace

TEST(NotifierCrowd, HearsWhatTheRulesSay)
{
    for (unsigned seed = 0; seed < 50; ++seed) {
        SCOPED_TRACE(seed);
        Crowd(seed).run();
        if (testing::Test::HasFailure())
            break;
    }
}
