#include "tests/support/Listener.h"
#include "tests/support/SampleEdit.h"

#include "workbench/model/host/ModelVob.h"

#include <gtest/gtest.h>

using namespace sample;

namespace
{
class Viewer : public testing::Test, public Bench
{
protected:
    ModelVob vob;
};

} // namespace

TEST_F(Viewer, FramesAreFoundAgainFromTheirTimesAtEveryRate)
{
    for (const auto& [numerator, denominator] : {std::pair(24000, 1001), std::pair(30000, 1001), std::pair(50, 1)}) {
        FormatData format;
        format.fpsNumerator = numerator;
        format.fpsDenominator = denominator;
        EditData data = emptyEdit("rates", format);
        data.media.push_back({10, media("/m/long.mp4", 1000000)});
        data.tracks[0].segments.push_back({11, 10, 0, "", 0, 0, 200000, {}});
        vob.setEdit(oribund::Kt::makePtr<EditModel>(data, catalogue()));
        for (int frame = 0; frame < 200000; frame += 997) {
            vob.setCurrentTime(vob.timeOf(frame));
            ASSERT_EQ(vob.currentFrame(), frame);
        }
    }
}

TEST_F(Viewer, ObserversSeeTheWholeOfAnOperation)
{
    addPicture(50, 100);
    const oribund::test::Listener<oribund::EditModification> observer(
        edit->modifications(), [this](const oribund::EditModification&) {
            EXPECT_EQ(findFault(edit->snapshot()), "");
            EXPECT_EQ(timeline().findTrack(kVideo)->segments.size(), 3u) << "half of it was told";
        });
    editor.addClip({media(), 0, 10, kVideo, kNoObject}, 80, Collision::Overwrite);
    EXPECT_GT(observer.count(), 0u);
}
