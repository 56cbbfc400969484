#include "workbench/store/files/Autosave.h"
#include "tests/store/TemporaryFolder.h"
#include "workbench/store/files/AtomicFile.h"
#include "workbench/store/files/ScratchFolder.h"

#include <csignal>
#include <gmock/gmock.h>
#include <random>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace workbench;
using namespace std::chrono_literals;
using test::slurp;
using test::spill;
using test::TemporaryFolder;
using testing::HasSubstr;
using testing::SizeIs;

namespace
{
/** A process that does something until it is killed. */
class Child
{
public:
    template <class Work>
    explicit Child(Work work)
        : pid_(::fork())
    {
        if (pid_ == 0) {
            work();
            ::_exit(0);
        }
    }

    ~Child() { kill(); }

    void kill()
    {
        if (pid_ <= 0)
            return;
        ::kill(pid_, SIGKILL);
        ::waitpid(pid_, nullptr, 0);
        pid_ = 0;
    }

private:
    pid_t pid_;
};

/** Contents that tell whether they are whole: their size and number stand at both ends. */
std::string numbered(int number)
{
    const std::string tag = std::to_string(number);
    return tag + "\n" + std::string(200'000 + 1000 * (number % 50), static_cast<char>('a' + number % 26)) + "\n" + tag;
}

bool isWhole(const std::string& text)
{
    return text == numbered(std::atoi(text.c_str()));
}

/** Waits, up to some seconds, for what another process does. */
template <class Condition>
bool comesTrue(Condition condition)
{
    for (int i = 0; i < 2000; ++i) {
        if (condition())
            return true;
        std::this_thread::sleep_for(5ms);
    }
    return false;
}

/** What a session leaves that is killed after it has stored a copy. */
void crash(const TemporaryFolder& folder, const std::string& project, const std::string& contents)
{
    const std::size_t before = Autosave::findRecoverable(folder.path()).size();
    Child child([&] {
        Autosave autosave(folder.path());
        autosave.setProject(project);
        autosave.store(contents);
        autosave.flush();
        spill(folder / "ready", "");
        ::pause();
    });
    ASSERT_TRUE(comesTrue([&] { return test::fs::exists(folder / "ready"); }));
    EXPECT_THAT(Autosave::findRecoverable(folder.path()), SizeIs(before)) << "it is still running";
    child.kill();
    test::fs::remove(folder / "ready");
}
} // namespace

TEST(Autosave, IsDueBeforeAChangeIsAnIntervalOld)
{
    const TemporaryFolder folder;
    Autosave autosave(folder.path(), 30s);
    const Autosave::Clock::time_point start{};
    EXPECT_FALSE(autosave.due(start + 1h)) << "nothing has changed";
    autosave.changed(start);
    EXPECT_FALSE(autosave.due(start + 10s));
    autosave.changed(start + 20s);
    EXPECT_TRUE(autosave.due(start + 29s)) << "going on with changes does not put it off";
    autosave.store("one");
    EXPECT_FALSE(autosave.due(start + 1h));
    autosave.changed(start + 60s);
    EXPECT_FALSE(autosave.due(start + 70s));
    autosave.clean();
    EXPECT_FALSE(autosave.due(start + 1h)) << "it was saved";
}

TEST(Autosave, LeavesNothingAfterASaveAndAnOrderlyEnd)
{
    const TemporaryFolder folder;
    {
        Autosave autosave(folder / "made/when/needed");
        for (int i = 0; i < 20; ++i)
            autosave.store(numbered(i));
        autosave.flush();
        EXPECT_EQ(autosave.takeProblem(), "");
        autosave.store(numbered(21));
        autosave.clean();
        EXPECT_EQ(std::distance(test::fs::directory_iterator(folder / "made/when/needed"), {}), 1);
        autosave.store(numbered(22));
        autosave.close();
    }
    EXPECT_TRUE(test::fs::is_empty(folder / "made/when/needed"));
}

TEST(Autosave, OffersWhatCrashedSessionsLeftNewestFirst)
{
    const TemporaryFolder folder;
    crash(folder, "/projects/first.mlt", "first");
    crash(folder, "", "second");
    {
        Autosave unsaved(folder.path());
    } // ends without a copy: nothing to offer

    std::vector<Recoverable> found = Autosave::findRecoverable(folder.path());
    ASSERT_THAT(found, SizeIs(2));
    test::fs::last_write_time(found[1].file, found[0].time - 1h);
    found = Autosave::findRecoverable(folder.path());
    EXPECT_GT(found[0].time, found[1].time);
    const Recoverable& first = slurp(found[0].file) == "first" ? found[0] : found[1];
    const Recoverable& second = slurp(found[0].file) == "first" ? found[1] : found[0];
    EXPECT_EQ(first.project, "/projects/first.mlt");
    EXPECT_EQ(second.project, "");

    {
        Autosave here(folder.path());
        Autosave there(folder.path());
        const auto copy = here.adopt(first);
        EXPECT_EQ(slurp(copy), "first");
        EXPECT_TRUE(there.adopt(first).empty()) << "only one takes it";
        EXPECT_THAT(Autosave::findRecoverable(folder.path()), SizeIs(1));
        there.close();
        // Not closed: as if it crashed before it was saved anew.
    }
    found = Autosave::findRecoverable(folder.path());
    ASSERT_THAT(found, SizeIs(2));
    for (const Recoverable& one : found)
        Autosave::discard(one);
    EXPECT_TRUE(test::fs::is_empty(folder.path()));
}

TEST(Autosave, OnlyOneRunningSessionHasAProject)
{
    const TemporaryFolder folder;
    const TemporaryFolder projects;
    spill(projects / "film.mlt", "x");
    test::fs::create_symlink("film.mlt", projects / "link.mlt");
    crash(folder, projects / "film.mlt", "a copy");
    Autosave first(folder.path());
    Autosave second(folder.path());
    EXPECT_TRUE(first.setProject(projects / "film.mlt")) << "whoever crashed has nothing any more";
    EXPECT_TRUE(first.setProject(projects / "film.mlt")) << "it is its own";
    EXPECT_FALSE(second.setProject(projects / "link.mlt"));
    EXPECT_TRUE(second.setProject(projects / "other.mlt"));
    EXPECT_TRUE(second.setProject({}));
    first.setProject({});
    EXPECT_TRUE(second.setProject(projects / "film.mlt"));
    EXPECT_THAT(Autosave::findRecoverable(folder.path()), SizeIs(1)) << "the copy is still there";
}

TEST(Autosave, SaysWhenNothingCanBeKept)
{
    const TemporaryFolder folder;
    spill(folder / "file", "");
    Autosave nowhere(folder / "file/below");
    EXPECT_THAT(nowhere.takeProblem(), HasSubstr("Nothing can be kept for recovery"));
    test::fs::create_directory(folder / "gone");
    Autosave late(folder / "gone");
    test::fs::remove_all(folder / "gone");
    late.changed(Autosave::Clock::now());
    late.store("x");
    late.flush();
    EXPECT_THAT(late.takeProblem(), HasSubstr("Save the project soon"));
    EXPECT_TRUE(late.due(Autosave::Clock::now() + 1min)) << "and tries again";
    EXPECT_TRUE(Autosave::findRecoverable(folder / "gone").empty());
}

TEST(Killed, AFileIsWholeAtAnyMoment)
{
    const TemporaryFolder folder;
    const auto path = folder / "project.mlt";
    spill(path, numbered(0));
    std::mt19937 random(3);
    int changed = 0;
    for (int round = 0; round < 40; ++round) {
        const std::string before = slurp(path);
        const int number = std::atoi(before.c_str());
        Child child([&] {
            for (int i = number + 1;; ++i)
                replaceFile(path, numbered(i));
        });
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 25'000));
        child.kill();
        const std::string after = slurp(path);
        ASSERT_TRUE(isWhole(after)) << "in round " << round << ": " << after.size() << " bytes";
        changed += after != before;
    }
    EXPECT_GT(changed, 5) << "the child was killed before it did anything";
    AtomicFile atWork(folder / "other");
    removeUnfinished(folder.path());
    EXPECT_EQ(folder.count(), 2u) << "what they left is cleared away, what is at work is not";
    EXPECT_TRUE(atWork.commit());
}

TEST(Killed, AFolderForTheRunIsRemovedByTheNextRun)
{
    const TemporaryFolder parent;
    Child child([&] {
        const ScratchFolder left(parent.path());
        spill(left.path() / "file", "x");
        spill(parent / "ready", "");
        ::pause();
    });
    ASSERT_TRUE(comesTrue([&] { return test::fs::exists(parent / "ready"); }));
    {
        const ScratchFolder mine(parent.path());
        EXPECT_EQ(parent.count(), 3u) << "the other is still in use";
    }
    child.kill();
    test::fs::create_directory(parent / "oribund-scratch-of-the-user");
    const ScratchFolder next(parent.path());
    EXPECT_TRUE(test::fs::is_empty(next.path()));
    EXPECT_EQ(parent.count(), 3u);
}
