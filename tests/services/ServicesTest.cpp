#include "tests/support/TestHost.h"
#include "tests/support/contracts/PreferencesContract.h"

#include "oribund/host/services/TextIds.h"

#include <gtest/gtest.h>

#include <limits>

namespace oribund
{
namespace
{

TEST(Preferences, ConvertOnlyWhatLosesNothing)
{
    test::TestHost host;
    prefs().setPreference("number", 2);
    EXPECT_EQ(prefs().getPreference("number", 0.5), 2.0);
    EXPECT_TRUE(prefs().getPreference("number", false));
    EXPECT_EQ(prefs().getPreference("number", String()), String("2"));

    prefs().setPreference("real", 2.5);
    EXPECT_EQ(prefs().getPreference("real", 9), 9) << "half a unit would be lost";
    prefs().setPreference("huge", 1e12);
    EXPECT_EQ(prefs().getPreference("huge", 9), 9);
    prefs().setPreference("least", std::numeric_limits<int>::min());
    EXPECT_EQ(prefs().getPreference("least", 0), std::numeric_limits<int>::min());
    prefs().setPreference("text", "41");
    EXPECT_EQ(prefs().getPreference("text", 9), 41);
    prefs().setPreference("words", "forty-one");
    EXPECT_EQ(prefs().getPreference("words", 9), 9);
    EXPECT_EQ(prefs().getPreference("words", 0.5), 0.5);
}

TEST(Texts, ComeFromTheHostWithPlaceholdersReplacedAndGapsSeen)
{
    test::TestHost host;
    host.textOf[{11576, 0}] = L"Effects on $TRACK$";
    EXPECT_EQ(displayText(UIString(11576, 0).withPlaceholder(L"TRACK", L"V1")), WString(L"Effects on V1"));
    EXPECT_EQ(displayText(UIString(L"Cost: 5$ for $TRACK$")), WString(L"Cost: 5$ for $TRACK$"))
        << "what is no known placeholder stays";
    EXPECT_EQ(displayText(12345), WString(L"#12345"));
    EXPECT_EQ(displayText(TextIds::kNoCue), L"No cue") << "where the host has none, the library has";
    host.textOf[{TextIds::kNoCue, 0}] = L"Keine Marke";
    EXPECT_EQ(displayText(TextIds::kNoCue), L"Keine Marke");

    showMessage(UIString(11576, 0).withPlaceholder(L"TRACK", L"A2"));
    EXPECT_EQ(host.shown, std::vector<std::string>{"Effects on A2"});
}

TEST(ShutdownSequence, RunsEachCallbackOnceByPriorityThenByAge)
{
    std::string order;
    ShutdownSequence sequence;
    const auto append = [&order](char name) { return [&order, name](Shutdown::eExitType) { order += name; }; };
    sequence.add(append('c'), 50);
    sequence.add(append('a'), 100);
    sequence.add(append('b'), 100);
    sequence.add([&](Shutdown::eExitType) { sequence.add(append('e'), 1000); }, 10);
    sequence.add(append('d'), 5);
    sequence.run(Shutdown::eExitType::Normal);
    EXPECT_EQ(order, "abced") << "one added while running comes next by its priority";
    sequence.run(Shutdown::eExitType::Normal);
    EXPECT_EQ(order, "abced");
}

TEST(Host, IsAskedForInstalledAndRestored)
{
    EXPECT_FALSE(Host::isInstalled());
    {
        test::TestHost outer;
        {
            test::TestHost inner;
            EXPECT_EQ(&Host::current(), &inner);
            logf("AddEffect : %s\n", "Blur");
            EXPECT_EQ(inner.logged, std::vector<std::string>{"AddEffect : Blur\n"});
        }
        EXPECT_EQ(&Host::current(), &outer);
        EXPECT_TRUE(outer.logged.empty());
    }
    EXPECT_DEATH(prefs(), "no host is installed");
}

struct MemoryPreferencesMaker {
    EditorPreferences& preferences() { return store; }

    test::MemoryPreferences store;
};

} // namespace

namespace test
{
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, PreferencesContract, MemoryPreferencesMaker);
} // namespace test
} // namespace oribund
