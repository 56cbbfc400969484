#include "workbench/engine/client/Exporter.h"

#include "tests/engine/SampleMedia.h"

#include <gmock/gmock.h>

#include <unistd.h>

namespace workbench
{
namespace
{

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Outcome = ExportResult::Outcome;

class ExporterTest : public testing::Test
{
protected:
    void SetUp() override
    {
        folder = SampleMedia::folder() / testing::UnitTest::GetInstance()->current_test_info()->name();
        fs::create_directories(folder);
    }

    ExportResult run(Projection edit, ExportSettings settings, bool cancelAtOnce = false)
    {
        Exporter exporter(testEngine());
        ExportResult result;
        int finished = 0;
        ExportCallbacks callbacks;
        callbacks.progress = [&](int done, int total) {
            EXPECT_LE(done, total);
            EXPECT_GE(done, lastDone);
            lastDone = done;
        };
        callbacks.finished = [&](const ExportResult& told) {
            result = told;
            ++finished;
        };
        EXPECT_TRUE(exporter.start(std::move(edit), std::move(settings), callbacks));
        if (cancelAtOnce)
            exporter.cancel();
        exporter.wait();
        EXPECT_EQ(finished, 1);
        EXPECT_FALSE(exporter.running());
        return result;
    }

    fs::path folder;
    int lastDone = 0;
};

TEST_F(ExporterTest, everyFormatComesBackWithItsFramesAndSound)
{
    const auto presets = testEngine()->installed()->presets;
    ASSERT_GE(presets.size(), 4U);
    for (const ExportPreset& preset : presets) {
        SCOPED_TRACE(preset.extension);
        lastDone = 0;
        const fs::path file = folder / ("film." + preset.extension);
        const ExportResult result = run(sampleEdit("frei0r.brightness", {{"0", "0.6"}}), {file.string(), 10, 34});
        ASSERT_EQ(result.outcome, Outcome::Done) << result.message;
        EXPECT_EQ(lastDone, 25);
        const MediaProbeResult probed = testEngine()->probeMedia(file.string());
        ASSERT_TRUE(probed.info) << probed.problem;
        EXPECT_EQ(probed.warning, "");
        EXPECT_TRUE(probed.info->hasAudio);
        EXPECT_EQ(probed.info->hasVideo, preset.video);
        EXPECT_NEAR(probed.info->frames, 25, 1);
        EXPECT_EQ(probed.info->width, preset.video ? 320 : 0);
    }
}

TEST_F(ExporterTest, saysWhatIsWrong)
{
    EXPECT_EQ(run(sampleEdit(), {(folder / "film.mp4").string()}, true).outcome, Outcome::Cancelled);
    EXPECT_EQ(run(sampleEdit(), {(folder / "film.xyz").string()}).outcome, Outcome::Failed);
    EXPECT_EQ(run(sampleEdit(), {(folder / "no" / "film.mp4").string()}).outcome, Outcome::Failed);
    Projection missing = sampleEdit();
    missing.clips[1].resource = "/no/such/file.mp4";
    const ExportResult result = run(missing, {(folder / "film.mp4").string()});
    EXPECT_EQ(result.outcome, Outcome::Failed);
    EXPECT_THAT(result.message, testing::HasSubstr("/no/such/file.mp4"));
}

TEST_F(ExporterTest, givesUpOnAnEffectThatDoesNotComeBack)
{
    ExportSettings settings{(folder / "film.mp4").string()};
    settings.stallTimeout = 700ms;
    const ExportResult result = run(sampleEdit(kHanging, {}), settings);
    EXPECT_EQ(result.outcome, Outcome::Failed);
    EXPECT_THAT(result.message, testing::HasSubstr(kHanging));
}

TEST_F(ExporterTest, saysWhichEffectCrashedAndWhere)
{
    Projection edit = sampleEdit();
    edit.clips[1].filters.push_back({"bad", kCrashing, 40, 74, {{"0", "1"}}});
    const ExportResult result = run(edit, {(folder / "film.mp4").string()});
    EXPECT_EQ(result.outcome, Outcome::Failed);
    EXPECT_THAT(result.message, testing::AllOf(testing::HasSubstr(kCrashing), testing::HasSubstr(" of 75 frames")));

    // What the viewer leaves out is left out here too.
    ExportSettings without{(folder / "film.mp4").string()};
    without.bypassed = {"bad"};
    lastDone = 0;
    EXPECT_EQ(run(edit, without).outcome, Outcome::Done);
}

TEST_F(ExporterTest, doesOneThingAtATime)
{
    Exporter exporter(testEngine());
    ExportSettings settings{(folder / "film.mp4").string()};
    settings.stallTimeout = 500ms;
    EXPECT_TRUE(exporter.start(sampleEdit(kHanging, {}), settings, {}));
    EXPECT_FALSE(exporter.start(sampleEdit(), settings, {}));
    exporter.wait();
    EXPECT_TRUE(exporter.start(sampleEdit(), settings, {}));
    exporter.wait();
}

} // namespace
} // namespace workbench
