#include "oribund/cues/CueSearch.h"
#include "tests/support/FakeView.h"

#include <gtest/gtest.h>

#include <cmath>

namespace oribund::test
{
namespace
{

Cue cueAt(double time, int id, unsigned flags = Cue::kVisible)
{
    Cue cue;
    cue.id = {id, 0, 0};
    cue.time = time;
    cue.flags = flags;
    return cue;
}

class CueSearch : public testing::Test
{
protected:
    /** On a strip of 100 pixels for 100 seconds; the first number of the id, 0 for none. */
    int nearest(int pos, int maxDistance, NumRange<double> visible = {0.0, 100.0}, int width = 100) const
    {
        const Cue cue = findCueNearestPos(edit, pos, width, maxDistance, visible);
        EXPECT_EQ(cue.valid(), cue.time != kNoCueTime);
        for (const Cue& each : edit->cues) {
            if (cue.valid() && cue.id == each.id)
                return static_cast<int>(&each - &*edit->cues.begin()) + 1;
        }
        return 0;
    }

    Kt::Ptr<FakeEdit> edit = Kt::makePtr<FakeEdit>();
};

TEST_F(CueSearch, TheNearestWithinReachWinsAndOfEquallyNearOnesTheFirst)
{
    edit->cues.add(cueAt(40.0, 1));
    edit->cues.add(cueAt(50.0, 2));
    edit->cues.add(cueAt(50.0, 3));
    edit->cues.add(cueAt(53.0, 4, 3)); // hidden
    edit->cues.add(cueAt(std::nan(""), 5));
    EXPECT_EQ(nearest(56, 6), 2) << "the reach is inclusive";
    EXPECT_EQ(nearest(57, 6), 0);
    EXPECT_EQ(nearest(45, 10), 1);
    EXPECT_EQ(nearest(46, 10), 2);
    EXPECT_EQ(nearest(0, 5), 0);
    EXPECT_EQ(nearest(40, -1), 0);
    EXPECT_EQ(nearest(0, 5, {40.0, 40.0}), 0);
    EXPECT_EQ(nearest(0, 5, {40.0, 50.0}, 0), 0);
    EXPECT_FALSE(findCueNearestPos({}, 0, 100, 5, {0.0, 1.0}).valid());
}

TEST_F(CueSearch, DistancesAreThoseOfWholePixels)
{
    edit->cues.add(cueAt(9.5, 1));   // pixel 10
    edit->cues.add(cueAt(12.49, 2)); // pixel 12
    edit->cues.add(cueAt(1e300, 3));
    EXPECT_EQ(nearest(11, 5), 1) << "one pixel from each";
    EXPECT_EQ(nearest(-3, 3, {12.0, 112.0}), 1) << "-2.5 is pixel -3";
}

TEST_F(CueSearch, ATooltipTellsWhenWhatAndWhy)
{
    Cue cue = cueAt(3600.0 + 62.0 + 3 * 0.04, 1);
    EXPECT_EQ(getCueTooltip(cue, edit), L"01:01:02:03");
    cue.name = L"Door";
    cue.description = L"opens too late";
    EXPECT_EQ(getCueTooltip(cue, edit), L"01:01:02:03  Door\nopens too late");
    EXPECT_EQ(getCueTooltip(cue, {}), L"Door\nopens too late");
    EXPECT_EQ(getCueTimecode(0.999999999, edit), L"00:00:01:00") << "a sum that is a hair short";
    EXPECT_EQ(getCueTimecode(-1.04, edit), L"-00:00:01:01");
    EXPECT_EQ(getCueTimecode(1.0 / 0.0, edit), L"");
}

} // namespace
} // namespace oribund::test
