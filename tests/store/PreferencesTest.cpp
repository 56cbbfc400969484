#include "tests/store/TemporaryFolder.h"
#include "workbench/store/files/FilePreferences.h"

#include <cmath>
#include <gmock/gmock.h>
#include <thread>

using namespace workbench;
using oribund::String;
using test::slurp;
using test::spill;
using test::TemporaryFolder;
using testing::HasSubstr;

TEST(FilePreferences, KeepWhatOthersWrote)
{
    const TemporaryFolder folder;
    const auto path = folder / "p.json";
    spill(path, R"({"future": {"a": [1, null]}, "big": 12345678901234567890, "mine": 1})");
    FilePreferences first(path);
    FilePreferences second(path);
    EXPECT_EQ(first.getPreference("future", 7), 7) << "no value of ours";
    EXPECT_EQ(first.getPreference("big", 7), 7);
    EXPECT_TRUE(second.setPreference("theirs", 2));
    EXPECT_TRUE(first.setPreference("mine", 3));
    EXPECT_FALSE(first.setPreference("endless", HUGE_VAL));

    const FilePreferences after(path);
    EXPECT_EQ(after.getPreference("theirs", 0), 2);
    EXPECT_EQ(after.getPreference("mine", 0), 3);
    EXPECT_THAT(slurp(path), HasSubstr("12345678901234567890"));
    EXPECT_THAT(slurp(path), HasSubstr("null"));
    EXPECT_THAT(slurp(path), HasSubstr("\n    \"mine\": 3")) << "a person can read and change it";
}

TEST(FilePreferences, KeepEveryChoiceOfTwoProgramsThatWriteAtATime)
{
    const TemporaryFolder folder;
    const auto path = folder / "p.json";
    constexpr int count = 60;
    const auto choose = [&](const char* who) {
        FilePreferences prefs(path);
        for (int i = 0; i < count; ++i)
            EXPECT_TRUE(prefs.setPreference(who + String(std::to_string(i).c_str()), i));
    };
    std::thread other([&] { choose("other "); });
    choose("mine ");
    other.join();
    const FilePreferences after(path);
    int kept = 0;
    for (int i = 0; i < count; ++i)
        for (const char* who : {"other ", "mine "})
            kept += after.getPreference(who + String(std::to_string(i).c_str()), -1) == i;
    EXPECT_EQ(kept, 2 * count);
}

TEST(FilePreferences, SetABrokenFileAsideAndGoOn)
{
    const TemporaryFolder folder;
    const auto path = folder / "p.json";
    const std::string broken[] = {
        "", "{\"a\": 1", "[1]", "nonsense", std::string(200'000, '['), R"({"a": "\ud800"})", "{\"a\": \"\xff\"}"};
    int n = 0;
    for (const std::string& text : broken) {
        SCOPED_TRACE(text.substr(0, 20));
        spill(path, text);
        FilePreferences prefs(path);
        const auto aside = path.string() + ".broken-" + std::to_string(++n);
        EXPECT_EQ(slurp(aside), text);
        EXPECT_THAT(prefs.takeProblem(), HasSubstr(".broken-" + std::to_string(n)));
        EXPECT_EQ(prefs.takeProblem(), "") << "told once";
        EXPECT_EQ(prefs.getPreference("a", 5), 5);
        EXPECT_TRUE(prefs.setPreference("a", 6));
        EXPECT_EQ(FilePreferences(path).getPreference("a", 5), 6);
    }
}

TEST(FilePreferences, SayWhenAChoiceCannotBeKept)
{
    const TemporaryFolder folder;
    spill(folder / "file", "x");
    FilePreferences prefs(folder / "file/p.json");
    EXPECT_FALSE(prefs.setPreference("a", 1));
    EXPECT_THAT(prefs.takeProblem(), HasSubstr("not a folder"));
    EXPECT_EQ(prefs.getPreference("a", 0), 0);
}
