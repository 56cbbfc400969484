#include "tests/store/AnyEdit.h"
#include "tests/store/TemporaryFolder.h"
#include "workbench/store/ProjectFile.h"
#include "workbench/store/files/MediaPaths.h"

#include <gmock/gmock.h>

using namespace sample;
using test::slurp;
using test::spill;
using test::TemporaryFolder;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace
{
ProjectReading readBack(const EditModel& edit, const ViewState& view = {})
{
    return parseProject(projectXml(edit, view, {}), {}, catalogue());
}
} // namespace

TEST(ProjectRoundTrip, GivesBackExactlyWhatWasSaved)
{
    int transitions = 0;
    int keyframed = 0;
    for (unsigned seed = 1; seed <= 300; ++seed) {
        SCOPED_TRACE(seed);
        const EditData data = AnyEdit(seed).make();
        ASSERT_EQ(findFault(data), "");
        const EditModel edit(data, catalogue());
        const EditData saved = edit.snapshot();
        const ViewState view{{"time", "1.5"}, {AnyEdit(seed).text(), AnyEdit(seed + 1).text()}};
        const ProjectReading reading = readBack(edit, view);
        ASSERT_EQ(reading.error, "");
        ASSERT_THAT(reading.warnings, IsEmpty());
        ASSERT_FALSE(reading.imported);
        ASSERT_EQ(*reading.edit, saved);
        ASSERT_EQ(reading.view, view);
        for (const TrackData& track : saved.tracks) {
            transitions += static_cast<int>(track.transitions.size());
            for (const SegmentData& segment : track.segments)
                for (const EffectData& effect : segment.effects)
                    for (const ParamData& param : effect.params)
                        keyframed += param.keyframed;
        }
    }
    EXPECT_GT(transitions, 50) << "the edits are not as odd as they should be";
    EXPECT_GT(keyframed, 500);
}

TEST(ProjectRoundTrip, NamesMediaBesideTheProjectRelativeToIt)
{
    const TemporaryFolder here;
    const TemporaryFolder elsewhere;
    std::filesystem::create_directory(here / "clips");
    Bench bench;
    const std::string inside = here / "clips/a b.mp4";
    const std::string outside = elsewhere / "c.mp4";
    const std::string sibling = here.path().string() + "2/d.mp4";
    int start = 0;
    for (const std::string& path : {inside, outside, sibling, std::string("color:red")})
        ASSERT_TRUE(bench.editor.addClip({media(path), 0, 50, kVideo, kNoObject}, 50 * start++));
    spill(inside, "x");
    ASSERT_EQ(saveProject(here / "p.mlt", *bench.edit, {}), "");

    const std::string xml = slurp(here / "p.mlt");
    EXPECT_THAT(xml, HasSubstr(">clips/a b.mp4<"));
    EXPECT_THAT(xml, Not(HasSubstr(inside)));
    const ProjectReading reading = readProject(here / "p.mlt", catalogue());
    ASSERT_EQ(reading.error, "");
    EXPECT_EQ(*reading.edit, bench.edit->snapshot());
    ASSERT_EQ(reading.edit->media.size(), 4u);
    EXPECT_THAT(reading.missingMedia, ElementsAre(reading.edit->media[1].id, reading.edit->media[2].id));

    // Through a link to the file, its own folder counts; the link stays, also one that led nowhere.
    std::filesystem::create_symlink(here / "p.mlt", elsewhere / "link.mlt");
    std::filesystem::create_symlink(here / "new.mlt", elsewhere / "dangling.mlt");
    for (const auto& [link, real] : {std::pair("link.mlt", "p.mlt"), std::pair("dangling.mlt", "new.mlt")}) {
        ASSERT_EQ(saveProject(elsewhere / link, *bench.edit, {}), "");
        EXPECT_TRUE(std::filesystem::is_symlink(elsewhere / link));
        EXPECT_EQ(slurp(here / real), xml);
        EXPECT_EQ(*readProject(elsewhere / link, catalogue()).edit, bench.edit->snapshot());
    }

    std::filesystem::rename(here / "clips", elsewhere / "clips");
    std::filesystem::copy(here / "p.mlt", elsewhere / "p.mlt");
    const ProjectReading after = readProject(elsewhere / "p.mlt", catalogue());
    ASSERT_TRUE(after);
    EXPECT_EQ(after.edit->media[0].info.path, elsewhere / "clips/a b.mp4") << "they moved together";
    EXPECT_EQ(after.missingMedia.size(), 2u);
}

TEST(ProjectRoundTrip, FindsMediaThatMovedTogether)
{
    using Places = std::vector<std::filesystem::path>;
    const auto first = [](const char* from, const char* to, const char* other) {
        return placesAfterMove(from, to, other).front();
    };
    EXPECT_EQ(first("/old/shoot/a/1.mp4", "/new/disk/shoot/a/1.mp4", "/old/shoot/b/2.mp4"), "/new/disk/shoot/b/2.mp4");
    EXPECT_EQ(first("/media/1.mp4", "/media/renamed.mp4", "/media/b/2.mp4"), "/media/b/2.mp4");
    EXPECT_EQ(first("/media/1.mp4", "/new/one.mp4", "/media/b/2.mp4"), "/new/b/2.mp4");
    EXPECT_EQ(placesAfterMove("/a/1.mp4", "/b/1.mp4", "/elsewhere/2.mp4"), (Places{"/b/2.mp4"}))
        << "it lay nowhere near, but may have been collected";
}
