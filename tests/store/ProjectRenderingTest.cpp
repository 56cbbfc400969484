// What a saved project looks like when the command-line player renders it.
#include "tests/store/CommandLinePlayer.h"
#include "tests/store/TemporaryFolder.h"
#include "tests/support/SampleEdit.h"
#include "workbench/store/ProjectFile.h"

#include <gmock/gmock.h>
#include <map>
#include <set>
#include <sstream>

using namespace sample;
using test::slurp;
using test::TemporaryFolder;
using testing::HasSubstr;

namespace
{
constexpr int kClipFrames = 40;

const EffectCatalogue& installed()
{
    static const EffectCatalogue instance = [] {
        EffectCatalogue made;
        EffectDescription brightness;
        brightness.service = "brightness";
        brightness.title = "Brightness";
        ParamDescription level = number("level", 0, 100, 100);
        level.scale = 100;
        brightness.params = {level};
        made.add(brightness);
        return made;
    }();
    return instance;
}

/** A small edit of one clip, with what shows it. */
class ProjectRendering : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!test::hasPlayer())
            GTEST_SKIP() << "no melt or ffmpeg";
        const std::string clip = folder_ / "clip.mp4";
        made_ = test::run("ffmpeg -v error -f lavfi -i testsrc=s=64x36:r=25:d=1.6 -g 12 -bf 0 -c:v mpeg4 -q:v 2 '" +
                          clip + "'");
        MediaInfo info = media(clip, kClipFrames);
        info.width = 64;
        info.height = 36;
        info.hasAudio = false;
        EXPECT_TRUE(editor.addClip({info, 0, 20, kVideo, kNoObject}, 0));
        EXPECT_TRUE(editor.addClip({info, 20, 20, kVideo, kNoObject}, 20));
    }

    static FormatData format() { return {64, 36, 25, 1, 1, 1, 709}; }

    ObjectId first() const { return edit->timeline().tracks()[0]->segments[0]->id(); }

    /** A checksum of each frame's picture; from another folder, and moved there, so that only the file can say where
        the clip lies. */
    std::vector<std::string> frames()
    {
        EXPECT_TRUE(made_);
        EXPECT_EQ(saveProject(folder_ / "project.mlt", *edit, {}), "");
        return playedFrames();
    }

    oribund::Kt::Ptr<oribund::EffectValParam<double>> addBrightness()
    {
        const ObjectId effect = editor.addEffect(first(), "brightness").object;
        return oribund::Kt::dynamicCast<oribund::EffectValParam<double>>(
            edit->timeline().findEffect(effect)->paramAt(0));
    }

    EditModelPtr edit = oribund::Kt::makePtr<EditModel>(emptyEdit("render", format()), installed());
    Editor editor{*edit};

private:
    std::vector<std::string> playedFrames() const
    {
        const TemporaryFolder there;
        test::fs::copy(folder_.path(), there.path(), test::fs::copy_options::recursive);
        const bool played = test::play(there / "project.mlt", there / "sums", "f=framemd5 vcodec=rawvideo");
        std::vector<std::string> sums;
        if (!played)
            return sums;
        std::istringstream lines(slurp(there / "sums"));
        for (std::string line; std::getline(lines, line);)
            if (!line.empty() && line[0] != '#')
                sums.push_back(line.substr(line.rfind(' ') + 1));
        return sums;
    }

    TemporaryFolder folder_;
    bool made_ = false;
};
} // namespace

TEST_F(ProjectRendering, ShowsClipsEffectsAndAnimationFrameByFrame)
{
    const std::vector<std::string> plain = frames();
    ASSERT_EQ(plain.size(), 40u);
    EXPECT_EQ(std::set<std::string>(plain.begin(), plain.end()).size(), 40u) << "each frame of the clip is another";

    // Pictures of constant settings, with which those of the animation have to agree.
    const auto level = addBrightness();
    std::map<int, std::vector<std::string>> constant;
    for (const int percent : {100, 75, 50, 25}) {
        level->setConstant(percent, oribund::ChangeKind::Single);
        constant[percent] = frames();
        ASSERT_EQ(constant[percent].size(), 40u);
        EXPECT_EQ(constant[percent] == plain, percent == 100);
        for (std::size_t frame = 20; frame < 40; ++frame)
            ASSERT_EQ(constant[percent][frame], plain[frame]) << "the other segment has no effect";
    }
    level->setConstant(100, oribund::ChangeKind::Single);
    level->setFunctionType(oribund::EffectValParamFnType::Keyframed, 0.0);
    level->addKeyframeAt(0.75, 25.0);
    const std::vector<std::string> animated = frames();
    ASSERT_EQ(animated.size(), 40u);
    EXPECT_EQ(animated[0], constant[100][0]);
    EXPECT_EQ(animated[5], constant[75][5]);
    EXPECT_EQ(animated[10], constant[50][10]);
    EXPECT_EQ(animated[19], constant[25][19]);
    EXPECT_NE(animated[7], constant[75][7]);
    EXPECT_NE(animated[7], constant[50][7]);
}

TEST_F(ProjectRendering, ShowsTheSameWhenAnAnimatedClipIsSplit)
{
    const auto level = addBrightness();
    level->setFunctionType(oribund::EffectValParamFnType::Keyframed, 0.1);
    level->addKeyframeAt(0.425, 20.0);
    level->addKeyframeAt(0.5, 35.0);
    level->graph()->setKeyframeType(0, oribund::KeyframeType::Smooth);
    level->graph()->setKeyframeType(1, oribund::KeyframeType::Smooth);
    const std::vector<std::string> whole = frames();
    ASSERT_EQ(whole.size(), 40u);
    ASSERT_TRUE(editor.splitSegment(first(), 13)); // in a straight piece
    ASSERT_TRUE(editor.splitSegment(first(), 6));  // in a curved one
    EXPECT_EQ(edit->timeline().tracks()[0]->segments.size(), 4u);
    EXPECT_EQ(frames(), whole);
}
