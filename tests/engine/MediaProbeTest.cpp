#include "workbench/engine/worker/MediaProbe.h"

#include "tests/engine/SampleMedia.h"
#include "workbench/engine/worker/ContainerCheck.h"
#include "workbench/engine/worker/graph/MltSession.h"

#include <gmock/gmock.h>

#include <fstream>
#include <unistd.h>

namespace workbench
{
namespace
{

namespace fs = std::filesystem;
using testing::HasSubstr;

class MediaProbeTest : public testing::Test
{
protected:
    MediaProbeResult probe(const std::string& path) { return probeMedia(*session, path); }

    static std::string write(const std::string& name, const std::string& content)
    {
        const fs::path file = SampleMedia::folder() / name;
        std::ofstream(file, std::ios::binary) << content;
        return file.string();
    }

    /** A copy of a file that ends after a share of it. */
    static std::string cutShort(const std::string& path, double share)
    {
        const fs::path copy = SampleMedia::folder() / ("short-" + fs::path(path).filename().string());
        fs::copy_file(path, copy, fs::copy_options::overwrite_existing);
        fs::resize_file(copy, static_cast<std::uintmax_t>(static_cast<double>(fs::file_size(path)) * share));
        return copy.string();
    }

    std::shared_ptr<MltSession> session = MltSession::open();
};

TEST_F(MediaProbeTest, readsFilmSoundAndStill)
{
    const MediaProbeResult film = probe(SampleMedia::clip());
    ASSERT_TRUE(film.info) << film.problem;
    EXPECT_EQ(film.warning, "");
    EXPECT_EQ(film.info->width, 320);
    EXPECT_EQ(film.info->height, 180);
    EXPECT_EQ(film.info->frames, 75);
    EXPECT_TRUE(film.info->hasAudio);
    EXPECT_EQ(film.info->audioRate, 48000);
    EXPECT_EQ(film.info->audioChannels, 2);

    const MediaProbeResult fast =
        probe(SampleMedia::make("fast.mkv", "-f lavfi -i testsrc=s=160x90:r=30000/1001 -t 2 -c:v mpeg4"));
    ASSERT_TRUE(fast.info) << fast.problem;
    EXPECT_EQ(fast.info->fpsNumerator, 30000);
    EXPECT_EQ(fast.info->fpsDenominator, 1001);
    EXPECT_NEAR(fast.info->frames, 60, 1);
    EXPECT_FALSE(fast.info->hasAudio);

    const MediaProbeResult wide =
        probe(SampleMedia::make("wide.mkv", "-f lavfi -i testsrc=s=144x116:r=25 -vf setsar=64/45 -t 1 -c:v mpeg4"));
    ASSERT_TRUE(wide.info) << wide.problem;
    EXPECT_EQ(wide.info->width, 205) << "in square pixels";
    EXPECT_EQ(wide.info->height, 116);
    const std::string upright = "-i '" + SampleMedia::clip() + "' -c copy -metadata:s:v:0 rotate=90";
    const MediaProbeResult turned = probe(SampleMedia::make("turned.mp4", upright));
    ASSERT_TRUE(turned.info) << turned.problem;
    EXPECT_EQ(turned.info->width, 180);
    EXPECT_EQ(turned.info->height, 320);

    const MediaProbeResult sound = probe(SampleMedia::make("tone.wav", "-f lavfi -i sine=440 -t 2"));
    ASSERT_TRUE(sound.info) << sound.problem;
    EXPECT_FALSE(sound.info->hasVideo);
    EXPECT_NEAR(sound.info->frames, 50, 1);

    const MediaProbeResult still = probe(SampleMedia::make("still.png", "-f lavfi -i testsrc=s=64x48 -frames:v 1"));
    ASSERT_TRUE(still.info) << still.problem;
    EXPECT_TRUE(still.info->isStill());
    EXPECT_EQ(still.info->width, 64);
}

TEST_F(MediaProbeTest, saysWhyAFileCannotBeUsed)
{
    EXPECT_THAT(probe("/no/such/file.mp4").problem, HasSubstr("does not exist"));
    EXPECT_THAT(probe(SampleMedia::folder().string()).problem, HasSubstr("folder"));
    EXPECT_THAT(probe(write("empty.mp4", "")).problem, HasSubstr("empty"));
    EXPECT_THAT(probe(write("text.txt", "Dear all,\nthis is a letter.\n")).problem, HasSubstr("not a media file"));
    EXPECT_THAT(probe(write("noise.mp4", std::string(5000, '\x5a'))).problem, HasSubstr("not a media file"));
    // The index of an ordinary file of this kind stands at its end.
    EXPECT_THAT(probe(cutShort(SampleMedia::clip(), 0.5)).problem, HasSubstr("cut short"));
    if (geteuid() != 0) {
        const std::string secret = write("secret.mp4", "x");
        fs::permissions(secret, fs::perms::none);
        EXPECT_THAT(probe(secret).problem, HasSubstr("permission"));
    }
}

TEST_F(MediaProbeTest, warnsOfAFileThatIsCutShortButPlays)
{
    for (const auto& [name, arguments] :
         {std::pair("start.mp4", "-f lavfi -i mandelbrot=s=160x90 -t 2 -c:v libx264 -movflags +faststart"),
          std::pair("a.mkv", "-f lavfi -i mandelbrot=s=160x90 -t 2 -c:v libx264"),
          std::pair("b.wav", "-f lavfi -i sine=440 -t 2")}) {
        const std::string whole = SampleMedia::make(name, arguments);
        EXPECT_EQ(probe(whole).warning, "") << name;
        EXPECT_EQ(checkContainer(whole), Completeness::Whole) << name;
        const MediaProbeResult result = probe(cutShort(whole, 0.6));
        EXPECT_TRUE(result.info) << name << ": " << result.problem;
        EXPECT_THAT(result.warning, HasSubstr("cut short")) << name;
    }
}

TEST_F(MediaProbeTest, theContainerCheckSurvivesNonsense)
{
    const std::string content = std::string("\0\0\0\x01", 4) + "ftyp" + std::string(8, '\xff');
    EXPECT_EQ(checkContainer(write("huge.mp4", content)), Completeness::CutShort);
    EXPECT_EQ(checkContainer(write("zero.mp4", std::string("\0\0\0\x04", 4) + "ftyp" + std::string(64, '\0'))),
              Completeness::CutShort);
    EXPECT_EQ(checkContainer(write("odd.mkv", std::string("\x1a\x45\xdf\xa3\0\0\0\0\0\0", 10))), Completeness::Unknown);
    EXPECT_EQ(checkContainer("/no/such/file"), Completeness::Unknown);
}

} // namespace
} // namespace workbench
