#include "workbench/app/session/ClipPlacement.h"
#include "tests/support/SampleEdit.h"

#include <gtest/gtest.h>

namespace workbench
{
namespace
{

class ClipPlacement : public testing::Test
{
protected:
    const Segment& added(const MediaInfo& media)
    {
        const EditOutcome outcome = appendMedia(edit, media);
        EXPECT_EQ(outcome.refused, "");
        return *edit.timeline().findSegment(outcome.object);
    }

    EditModel edit{emptyEdit("e", FormatData()), sample::catalogue()};
};

TEST_F(ClipPlacement, MediaGoesBehindWhatIsThereWithItsSound)
{
    MediaInfo film = sample::media("/media/a.mp4", 100);
    film.hasVideo = film.hasAudio = true;
    MediaInfo sound = film;
    sound.hasVideo = false;
    sound.width = sound.height = 0;
    MediaInfo still = film;
    still.frames = 0;
    still.hasAudio = false;

    const Segment& first = added(film);
    EXPECT_EQ(first.data.start, 0);
    EXPECT_NE(first.data.link, kNoObject);
    // Sound alone goes behind the other sound, and what follows it must not tear picture and sound apart.
    EXPECT_EQ(added(sound).data.start, 100);
    const Segment& second = added(film);
    EXPECT_EQ(second.data.start, 200);
    EXPECT_EQ(edit.timeline().segmentAt(edit.timeline().tracks()[1]->id(), 250)->data.link, second.data.link);
    const Segment& picture = added(still);
    EXPECT_EQ(picture.data.start, 300);
    EXPECT_EQ(picture.data.length, kStillSeconds * 25);

    EXPECT_EQ(topSegmentAt(edit, 50), &first);
    EXPECT_EQ(topSegmentAt(edit, 150), nullptr);
    EXPECT_EQ(nextCut(edit, 0), 100);
    EXPECT_EQ(nextCut(edit, 300), 425);
    EXPECT_EQ(nextCut(edit, 9999), 425);
    EXPECT_EQ(previousCut(edit, 300), 200);
    EXPECT_EQ(previousCut(edit, 0), 0);
}

TEST(FormatOfMedia, IsThatOfAFilmAndNeverOneThatCannotBeEncoded)
{
    MediaInfo film;
    film.hasVideo = true;
    film.frames = 10;
    film.width = 853;
    film.height = 481;
    film.fpsNumerator = 30000;
    film.fpsDenominator = 1001;
    const FormatData format = formatFor(film);
    EXPECT_EQ(format.width, 852);
    EXPECT_EQ(format.height, 480);
    EXPECT_EQ(format.fpsNumerator, 30000);

    film.fpsNumerator = 90000;
    film.fpsDenominator = 1;
    EXPECT_EQ(formatFor(film).fpsNumerator, 25);
    film.fpsDenominator = 0;
    EXPECT_EQ(formatFor(film).fpsNumerator, 25);
    film.frames = 0;
    EXPECT_EQ(formatFor(film), FormatData());
}

} // namespace
} // namespace workbench
