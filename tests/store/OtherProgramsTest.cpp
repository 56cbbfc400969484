// Projects that an editor and a command-line player wrote: what of them is shown, and that the rest is not lost.
#include "tests/store/CommandLinePlayer.h"
#include "tests/store/TemporaryFolder.h"
#include "tests/support/SampleEdit.h"
#include "workbench/store/ProjectFile.h"

#include <gmock/gmock.h>

#include <cstdlib>

using namespace workbench;
using test::slurp;
using test::spill;
using test::TemporaryFolder;
using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Lt;
using testing::SizeIs;

namespace
{
constexpr int kSide = 32;      // of the pictures that are compared
constexpr double kAlike = 2.0; // of 255

const EffectCatalogue& effectsOfMelt()
{
    static const EffectCatalogue instance = [] {
        EffectCatalogue made;
        EffectDescription effect;
        effect.service = effect.title = "brightness";
        effect.params = {sample::number("level", 0, 1, 1)};
        made.add(effect);
        effect.service = effect.title = "sepia";
        effect.params = {sample::number("u", 0, 255, 75), sample::number("v", 0, 255, 150)};
        made.add(effect);
        effect.service = effect.title = "greyscale";
        effect.params = {};
        made.add(effect);
        return made;
    }();
    return instance;
}

/** The projects with the media that they show. */
class OtherPrograms : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!test::hasPlayer())
            GTEST_SKIP() << "no melt or ffmpeg";
        const std::string make = "cd '" + folder_.path().string() + "' && ffmpeg -v error -nostdin -y -f lavfi -i ";
        const std::string film = " -f lavfi -i sine=440:r=48000 -shortest -g 12 -bf 0 -c:v mpeg4 -q:v 2 -c:a aac ";
        ASSERT_TRUE(test::run(make + "testsrc=s=320x180:r=25:d=4" + film + "a.mp4"));
        ASSERT_TRUE(
            test::run(make + "mandelbrot=s=320x180:r=25:maxiter=200:end_pts=150" + film + "-frames:v 150 b.mp4"));
        ASSERT_TRUE(test::run(make + "testsrc2=s=320x180 -frames:v 1 still.png"));
        ASSERT_TRUE(test::run(make + "sine=300:d=5 tone.wav"));
    }

    /** The project as it was written, with its media in another folder. */
    ProjectReading open(const std::string& name)
    {
        file_ = slurp(test::fs::path(ORIBUND_TEST_PROJECTS) / name);
        EXPECT_FALSE(file_.empty());
        // Where the player ran is written into its files.
        if (const std::size_t root = file_.find("/tmp/film"); root != std::string::npos)
            file_.replace(root, 9, folder_.path().string());
        return parseProject(file_, folder_.path(), effectsOfMelt());
    }

    /** How much each frame of the project as it was saved here differs from what was opened, of 255. */
    std::vector<double> differences(const ProjectReading& reading)
    {
        const oribund::Kt::Ptr<EditModel> edit = oribund::Kt::makePtr<EditModel>(*reading.edit, effectsOfMelt());
        EXPECT_EQ(saveProject(folder_ / "ours.mlt", *edit, {}), "");
        EXPECT_EQ(readProject(folder_ / "ours.mlt", effectsOfMelt()).edit->original, file_) << "nothing is lost";
        spill(folder_ / "theirs.mlt", file_);
        const std::string ours = pictures("ours");
        const std::string theirs = pictures("theirs");
        EXPECT_EQ(ours.size(), theirs.size());
        std::vector<double> result;
        for (std::size_t at = 0; at < std::min(ours.size(), theirs.size()); at += kSide * kSide) {
            double sum = 0;
            for (std::size_t i = at; i < at + kSide * kSide; ++i)
                sum += std::abs(static_cast<unsigned char>(ours[i]) - static_cast<unsigned char>(theirs[i]));
            result.push_back(sum / (kSide * kSide));
        }
        return result;
    }

private:
    std::string pictures(const std::string& name)
    {
        EXPECT_TRUE(
            test::play(folder_ / (name + ".mlt"), folder_ / name, "f=rawvideo vcodec=rawvideo pix_fmt=gray s=32x32"));
        return slurp(folder_ / name);
    }

    TemporaryFolder folder_;
    std::string file_;
};
} // namespace

/** "V1: 0+89 a.mp4, 89+140 b.mp4 from 10": each segment with its start and length. */
std::vector<std::string> tracksOf(const EditData& edit)
{
    std::vector<std::string> lines;
    for (const TrackData& track : edit.tracks) {
        std::string line = track.name + ":";
        for (const SegmentData& segment : track.segments) {
            line += (line.back() == ':' ? " " : ", ") + std::to_string(segment.start) + '+' +
                    std::to_string(segment.length) + ' ' + segment.name;
            line += segment.in > 0 ? " from " + std::to_string(segment.in) : "";
        }
        lines.push_back(line);
    }
    return lines;
}

TEST_F(OtherPrograms, ATimelineWithADissolveLooksTheSame)
{
    const ProjectReading reading = open("shotcut-mix.mlt");
    EXPECT_THAT(tracksOf(*reading.edit), ElementsAre("V1: 0+89 a.mp4, 89+140 b.mp4 from 10, 250+100 still.png",
                                                     "A1: 0+89 a.mp4, 89+140 b.mp4 from 10"));
    EXPECT_THAT(reading.warnings, IsEmpty());
    EXPECT_EQ(reading.edit->cues.size(), 1u);
    EXPECT_THAT(differences(reading), AllOf(SizeIs(350), Each(Lt(kAlike))));
}

TEST_F(OtherPrograms, CutsOfPartsOfClipsLookTheSame)
{
    const ProjectReading reading = open("melt-mix.mlt");
    EXPECT_THAT(tracksOf(*reading.edit),
                ElementsAre("V1: 0+62 a.mp4, 62+94 b.mp4 from 22, 156+45 still.png from 5, 201+25 color:red",
                            "A1: 0+62 a.mp4, 62+94 b.mp4 from 22"));
    EXPECT_EQ(reading.edit->tracks[0].transitions.at(1).wipe, "/usr/share/mlt-7/wipe.pgm");
    EXPECT_THAT(reading.warnings, IsEmpty());
    EXPECT_THAT(differences(reading), AllOf(SizeIs(226), Each(Lt(kAlike))));
}

TEST_F(OtherPrograms, WhatIsNotUnderstoodIsListedAndLeavesNoHole)
{
    ProjectReading reading = open("melt-rest.mlt");
    EXPECT_THAT(tracksOf(*reading.edit), ElementsAre("V1: 0+25 noise:<producer>, 25+31 a.mp4, 62+26 b.mp4 from 25",
                                                     "A1: 25+31 a.mp4, 62+26 b.mp4 from 25"));
    EXPECT_THAT(reading.warnings, ElementsAre(HasSubstr(": 1 effect on a whole track, 1 change of speed."),
                                              HasSubstr("not active here: \"noise:<producer>\"")));
    const std::vector<double> differ = differences(reading);
    ASSERT_EQ(differ.size(), 88u);
    EXPECT_THAT(std::vector(differ.begin() + 62, differ.end()), Each(Lt(kAlike)));

    reading = open("shotcut-speed.mlt");
    EXPECT_THAT(tracksOf(*reading.edit).at(0), "V1: 0+50 a.mp4, 100+150 b.mp4, 250+100 still.png");
    EXPECT_THAT(reading.warnings, ElementsAre(HasSubstr(": 1 change of speed.")));

    reading = open("melt-tracks.mlt");
    EXPECT_THAT(tracksOf(*reading.edit), ElementsAre("V2: 25+76 b.mp4 from 5", "V1: 0+100 a.mp4", "A1: 0+100 a.mp4",
                                                     "A2: 25+76 b.mp4 from 5", "A3: 0+125 tone.wav"));
    EXPECT_THAT(reading.warnings, ElementsAre(HasSubstr(": 1 effect on a whole track, 1 transition between tracks."),
                                              HasSubstr("not active here: \"volume\"")));
}

TEST_F(OtherPrograms, EffectsAndTheirFadesAreTaken)
{
    const ProjectReading reading = open("shotcut-full.mlt");
    EXPECT_THAT(reading.warnings,
                ElementsAre(HasSubstr(": 1 effect on a whole track."),
                            HasSubstr("not active here: \"affine\", \"dynamictext\", \"lift_gamma_gain\".")));
    const auto& effects = reading.edit->tracks.at(0).segments.at(1).effects;
    ASSERT_EQ(effects.size(), 6u);
    const ChannelData& fade = effects[1].params.at(0).channels.at(0);
    ASSERT_EQ(fade.size(), 2u);
    // The clip has lost ten of its 150 frames to the dissolve.
    EXPECT_DOUBLE_EQ(fade[1].time, (24.0 - 10.0) / 140.0);
    EXPECT_EQ(reading.edit->tracks.at(2).segments.at(0).effects.size(), 1u);
}
