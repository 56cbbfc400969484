#include "tests/support/SampleEdit.h"

#include "oribund/host/base/FXTimeMapping.h"
#include "workbench/model/host/ModelMonitor.h"
#include "workbench/model/host/ModelVob.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

using namespace sample;
using oribund::FXTime;
using oribund::IdStamp;

namespace
{

/** A viewer with an effect over four seconds whose level and centre have keyframes. */
class KeyframeGesture : public testing::Test, public Bench
{
protected:
    KeyframeGesture()
    {
        animate(*level, {0.1, 0.5});
        animate(*centre, {0.2});
        undo().endGesture();
        vob.setEdit(edit);
        vob.setCurrentTime(3.0);
        monitor = vob.getEffectMonitor();
        monitor->selectAllKeyframes(stampOf(tint), {}, true);
        steps = undo().size();
    }

    static void animate(oribund::EffectValParamBase& param, std::initializer_list<double> times)
    {
        param.setFunctionType(oribund::EffectValParamFnType::Keyframed, *times.begin());
        for (const double time : times)
            param.graph()->addKeyframe(time);
    }

    ObjectId clip = addPicture(50, 100);
    ObjectId tint = editor.addEffect(clip, "tint").object;
    oribund::Kt::Ptr<oribund::EffectValParam<double>> level = param<double>(tint, kLevel);
    oribund::Kt::Ptr<oribund::EffectValParam<oribund::Vector2d>> centre = param<oribund::Vector2d>(tint, kCentre);
    ModelVob vob;
    oribund::CompoundEffectMonitor* monitor = nullptr;
    std::size_t steps = 0;
};

TEST_F(KeyframeGesture, ThatComesToNothingLeavesRedoAlone)
{
    const auto move = [&](double by) {
        monitor->makeBackup(oribund::BackupKind::Undo, {});
        monitor->trimSelectedKeyframes(stampOf(kVideo), by);
    };
    move(0.04);
    monitor->endTrim();
    EXPECT_TRUE(undo().undo());
    move(-0.4000000001);
    move(0.4);
    monitor->endTrim();
    EXPECT_TRUE(undo().redo());
    EXPECT_NEAR(level->graph()->timeAt(0), 0.11, 1e-9);
}

/** Where the selected keyframes are in the edit, in frames; of whatever effect. */
std::multiset<int> framesSelected(oribund::CompoundEffectMonitor& monitor)
{
    std::multiset<int> frames;
    for (const auto& [key, times] : monitor.keyframeSelection().all())
        for (const double time : times)
            frames.insert(static_cast<int>(
                std::lround(oribund::toEditTime(monitor.getEditRegion(key.first), FXTime{time}) / 0.04)));
    return frames;
}

TEST_F(KeyframeGesture, SelectedKeyframesStaySelectedWhereverTheyGo)
{
    // A neighbour stands where the selected one would be in the shorter segment, were it not taken along.
    animate(*level, {0.1, 0.4, 0.5});
    monitor->selectAllKeyframes(IdStamp::wildcard(), {}, false);
    monitor->selectKeyframe({stampOf(tint), level->id(), 0.1}, true);
    monitor->selectKeyframe({stampOf(tint), level->id(), 0.5}, true);
    monitor->selectKeyframe({stampOf(tint), centre->id(), 0.2}, true);
    const auto selected = [&] { return framesSelected(*monitor); };
    const std::multiset<int> before{60, 70, 100};
    ASSERT_EQ(selected(), before);

    EXPECT_TRUE(editor.trimEnd(clip, 175, oribund::ChangeKind::Start));
    EXPECT_TRUE(editor.trimEnd(clip, 130, oribund::ChangeKind::Continuation));
    EXPECT_EQ(selected(), before);
    EXPECT_TRUE(editor.trimStart(clip, 55));
    EXPECT_EQ(selected(), before);
    EXPECT_TRUE(editor.moveSegment(clip, kVideo, 1055));
    EXPECT_EQ(selected(), (std::multiset<int>{1060, 1070, 1100}));
    const ObjectId right = editor.splitSegment(clip, 1080).object;
    EXPECT_EQ(selected(), (std::multiset<int>{1060, 1070, 1100})) << "one of them is the right half's now";
    const auto heir = timeline().findSegment(right)->effects.front();
    EXPECT_EQ(monitor->getNumKeyframesSelected(heir->id(), {}), 1);
    while (undo().size() > steps && undo().position() > steps + 1) {
        EXPECT_TRUE(undo().undo());
        EXPECT_EQ(selected().size(), 3u) << undoTitle();
    }
    EXPECT_EQ(selected(), before);
    EXPECT_TRUE(undo().redo());
    EXPECT_EQ(selected(), before);

    EXPECT_TRUE(editor.trimStart(clip, 62));
    EXPECT_EQ(selected().size(), 0u) << "one of them is out of sight";
}

} // namespace
