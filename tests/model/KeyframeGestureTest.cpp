#include "tests/support/SampleEdit.h"

#include "oribund/host/base/FXTimeMapping.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitorClient.h"
#include "oribund/host/effects/keyframes/KeyframeClip.h"
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
class KeyframeGesture : public testing::Test, public Bench, public oribund::CompoundEffectMonitorClient
{
protected:
    KeyframeGesture()
        : CompoundEffectMonitorClient(nullptr)
    {
        animate(*level, {0.1, 0.5});
        animate(*centre, {0.2});
        undo().endGesture();
        vob.setEdit(edit);
        vob.setCurrentTime(3.0);
        monitor = vob.getEffectMonitor();
        setMonitor(monitor);
        monitor->selectAllKeyframes(stampOf(tint), {}, true);
        steps = undo().size();
        told = 0;
    }

    void handleFXModifications(const ChangeDescription&) override { ++told; }

    static void animate(oribund::EffectValParamBase& param, std::initializer_list<double> times)
    {
        param.setFunctionType(oribund::EffectValParamFnType::Keyframed, *times.begin());
        for (const double time : times)
            param.graph()->addKeyframe(time);
    }

    void drag(bool announced, int moves = 3)
    {
        for (int i = 0; i < moves; ++i) {
            if (announced)
                monitor->makeBackup(oribund::BackupKind::Undo, {});
            monitor->trimSelectedKeyframes(stampOf(kVideo), 0.04);
        }
    }

    void expectMovedBy(int frames)
    {
        EXPECT_NEAR(level->graph()->timeAt(0), 0.1 + frames * 0.01, 1e-9);
        EXPECT_NEAR(level->graph()->timeAt(1), 0.5 + frames * 0.01, 1e-9);
        EXPECT_NEAR(centre->graph()->timeAt(0), 0.2 + frames * 0.01, 1e-9);
    }

    ObjectId clip = addPicture(50, 100);
    ObjectId tint = editor.addEffect(clip, "tint").object;
    oribund::Kt::Ptr<oribund::EffectValParam<double>> level = param<double>(tint, kLevel);
    oribund::Kt::Ptr<oribund::EffectValParam<oribund::Vector2d>> centre = param<oribund::Vector2d>(tint, kCentre);
    ModelVob vob;
    oribund::CompoundEffectMonitor* monitor = nullptr;
    std::size_t steps = 0;
    int told = 0;
};

TEST_F(KeyframeGesture, IsOneStepHoweverOftenItMovesAndWasAnnounced)
{
    for (const bool announced : {true, false}) {
        told = 0;
        drag(announced);
        expectMovedBy(3);
        EXPECT_EQ(told, 3);
        monitor->endTrim();
        undo().endGesture();
        EXPECT_EQ(undo().size(), steps + 1) << announced;
        EXPECT_TRUE(undo().undo());
        expectMovedBy(0);
        EXPECT_TRUE(undo().redo());
        expectMovedBy(3);
        EXPECT_TRUE(undo().undo());
        monitor->selectAllKeyframes(stampOf(tint), {}, true);
    }
}

TEST_F(KeyframeGesture, IsOverWithAnUndoInItsMidst)
{
    drag(true);
    undo().undo();
    expectMovedBy(0);
    EXPECT_EQ(monitor->getNumKeyframesSelected(IdStamp::wildcard(), {}), 3);
    drag(true);
    expectMovedBy(0);
    monitor->cancelTrim();
    expectMovedBy(0);
    EXPECT_TRUE(undo().redo());
    expectMovedBy(3);
    EXPECT_EQ(monitor->getNumKeyframesSelected(IdStamp::wildcard(), {}), 3);
}

TEST_F(KeyframeGesture, IsOverWithAnotherEditInItsMidst)
{
    drag(true);
    EXPECT_TRUE(editor.trimEnd(clip, 137));
    const double first = level->graph()->timeAt(0);
    EXPECT_NEAR(first * 87, 13.0, 1e-9) << "on a frame";
    drag(true);
    monitor->cancelTrim();
    EXPECT_EQ(level->graph()->timeAt(0), first) << "what was moved before is a step by now";
    EXPECT_EQ(undo().size(), steps + 2);
    EXPECT_TRUE(undo().undo());
    EXPECT_TRUE(undo().undo());
    expectMovedBy(0);
}

TEST_F(KeyframeGesture, ThatComesToNothingLeavesRedoAlone)
{
    drag(true);
    monitor->endTrim();
    EXPECT_TRUE(undo().undo());
    monitor->makeBackup(oribund::BackupKind::Undo, {});
    monitor->trimSelectedKeyframes(stampOf(kVideo), -0.4000000001);
    monitor->trimSelectedKeyframes(stampOf(kVideo), 0.4);
    monitor->endTrim();
    EXPECT_TRUE(undo().redo());
    expectMovedBy(3);
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
