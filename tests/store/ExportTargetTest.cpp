#include "workbench/store/files/ExportTarget.h"
#include "tests/store/TemporaryFolder.h"

#include <gmock/gmock.h>

using namespace workbench;
using test::slurp;
using test::spill;
using test::TemporaryFolder;
using testing::HasSubstr;
namespace fs = std::filesystem;

using Existing = ExportTarget::Existing;

TEST(ExportTarget, IsNeverAFileInUseUnderWhateverName)
{
    const TemporaryFolder folder;
    fs::create_directory(folder / "media");
    spill(folder / "media/clip.mp4", "film");
    fs::create_symlink("media", folder / "linked");
    fs::create_symlink("media/clip.mp4", folder / "link.mp4");
    fs::create_hard_link(folder / "media/clip.mp4", folder / "twin.mp4");
    const std::vector<std::string> used{folder / "link.mp4", folder / "gone.mp4"};
    for (const char* name : {"media/clip.mp4", "link.mp4", "twin.mp4", "linked/clip.mp4", "media/../linked/clip.mp4",
                             "gone.mp4", "media/../gone.mp4"}) {
        SCOPED_TRACE(name);
        EXPECT_THAT(ExportTarget::findFault(folder / name, used), HasSubstr("made of"));
        ExportTarget target(folder / name, used, Existing::Replace);
        EXPECT_NE(target.error(), "");
        EXPECT_FALSE(target.complete());
    }
    EXPECT_EQ(slurp(folder / "media/clip.mp4"), "film");
    EXPECT_EQ(ExportTarget::findFault(folder / "media/other.mp4", used), "");
    EXPECT_THAT(ExportTarget::findFault(folder / "media", {}), HasSubstr("a folder has that name"));
    EXPECT_THAT(ExportTarget::findFault("/dev/null", {}), HasSubstr("Cannot write"));
    EXPECT_EQ(folder.count(), 4u);
}

TEST(ExportTarget, TakesItsNameWhenCompleteAndTouchesNoOtherFile)
{
    const TemporaryFolder folder;
    spill(folder / "film.part.mp4", "the user's own");
    spill(folder / "film.mp4", "old");
    const auto write = [&](Existing existing, bool complete) {
        ExportTarget target(folder / "film.mp4", {}, existing);
        EXPECT_EQ(target.error(), "");
        EXPECT_EQ(target.partial().extension(), ".mp4");
        EXPECT_EQ(fs::file_size(target.partial()), 0u);
        EXPECT_EQ(slurp(folder / "film.mp4"), existing == Existing::Replace ? "old" : "");
        spill(target.partial(), "new");
        EXPECT_TRUE(!complete || target.complete()) << target.error();
        return target.path();
    };
    EXPECT_THAT(ExportTarget(folder / "film.mp4", {}, Existing::Keep).error(), HasSubstr("exists already"));
    write(Existing::Replace, false);
    EXPECT_EQ(slurp(folder / "film.mp4"), "old");
    EXPECT_EQ(write(Existing::Replace, true), folder / "film.mp4");
    EXPECT_EQ(slurp(folder / "film.mp4"), "new");

    // A file that comes up during the export was never agreed to be replaced.
    fs::remove(folder / "film.mp4");
    ExportTarget late(folder / "film.mp4", {}, Existing::Keep);
    spill(folder / "film.mp4", "somebody else's");
    spill(late.partial(), "mine");
    EXPECT_TRUE(late.complete());
    EXPECT_EQ(slurp(folder / "film.mp4"), "somebody else's");
    EXPECT_EQ(late.path(), folder / "film-2.mp4");
    EXPECT_EQ(slurp(late.path()), "mine");
    EXPECT_EQ(slurp(folder / "film.part.mp4"), "the user's own");
    EXPECT_EQ(folder.count(), 3u);
}

TEST(ExportTarget, ClearsAwayWhatDeadExportsLeftAndNothingElse)
{
    const TemporaryFolder folder;
    spill(folder / ".film.oribund-abc123.mp4", "of a process that was killed");
    spill(folder / ".film.oribund-abc12.mp4", "the user's own");
    spill(folder / "film.oribund-abc123.mp4", "the user's own");
    const ExportTarget running(folder / "one.mp4", {}, Existing::Keep);
    const ExportTarget next(folder / "two.mp4", {}, Existing::Keep);
    EXPECT_TRUE(fs::exists(running.partial())) << "it is at work";
    EXPECT_FALSE(fs::exists(folder / ".film.oribund-abc123.mp4"));
    EXPECT_EQ(folder.count(), 4u);
}
