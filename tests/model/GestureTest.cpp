#include "tests/support/SampleEdit.h"

#include "oribund/host/edit/EditGesture.h"
#include "oribund/host/notify/MethodCallback.h"

#include <gtest/gtest.h>

using namespace sample;
using oribund::ChangeKind;
using oribund::EffectValParamFnType;

namespace
{
class Gesture : public testing::Test, public Bench
{
protected:
    ObjectId clip = addPicture(0, 100);
    ObjectId tint = editor.addEffect(clip, "tint").object;
    oribund::Kt::Ptr<oribund::EffectValParam<double>> level = param<double>(tint, kLevel);
    std::size_t steps = undo().size();

    std::size_t added() { return undo().size() - steps; }

    void dragLevel(std::initializer_list<double> values)
    {
        ChangeKind kind = ChangeKind::Start;
        for (const double value : values) {
            level->setConstant(value, kind);
            kind = ChangeKind::Continuation;
        }
    }

    void animate()
    {
        level->setFunctionType(EffectValParamFnType::Keyframed, 0.0);
        level->addKeyframeAt(0.5, 80.0);
        undo().endGesture();
        steps = undo().size();
    }
};
} // namespace

TEST_F(Gesture, ASeriesEndsWithTheNextThingThatIsNotItsContinuation)
{
    dragLevel({60, 61});
    dragLevel({62, 63});
    level->setConstant(64);
    level->setConstant(65, ChangeKind::Continuation); // of the single change
    editor.setEffectsEnabled({&tint, 1}, false);
    level->setConstant(66, ChangeKind::Continuation); // of nothing: a step of its own
    param<bool>(tint, kOn)->setConstant(true);
    undo().endGesture();
    EXPECT_EQ(added(), 6u);
    const char* const titles[] = {"On no to yes",       "Level 65 % to 66 %", "Switch off Tint",
                                  "Level 63 % to 65 %", "Level 61 % to 63 %", "Level 50 % to 61 %"};
    for (const char* title : titles) {
        EXPECT_EQ(undoTitle(), title);
        undo().undo();
    }
    EXPECT_EQ(level->constant(), 50.0);
}

TEST_F(Gesture, CancellingRestoresWhatWasThere)
{
    const auto before = edit->snapshot();
    oribund::EditGesture gesture;
    const auto shuffle = [&] {
        gesture.begin(edit, L"Shuffle");
        const oribund::EditModifier inner(edit, L"Inner");
        editor.moveSegment(clip, kVideo, 50);
        param<double>(tint, kLevel)->setConstant(1);
        editor.setEffectsEnabled({&tint, 1}, false);
    };
    gesture.begin(edit);
    EXPECT_FALSE(gesture.abort()) << "there is nothing";
    gesture.begin(edit);
    dragLevel({60, 70});
    EXPECT_TRUE(gesture.abort());
    EXPECT_EQ(edit->snapshot(), before);
    EXPECT_FALSE(gesture.abort());
    shuffle();
    EXPECT_TRUE(gesture.abort());
    EXPECT_EQ(edit->snapshot(), before);
    EXPECT_EQ(added(), 0u);

    shuffle();
    EXPECT_FALSE(undo().undo()) << "in the middle of it";
    gesture.finish();
    EXPECT_EQ(added(), 1u);
    EXPECT_EQ(undoTitle(), "Shuffle");
    undo().undo();
    EXPECT_EQ(edit->snapshot(), before);
}

TEST_F(Gesture, ChangesOfParametersAreOneStepUntilSomethingElseIsDone)
{
    const auto whole = param<double>(tint, kWhole);
    oribund::EditGesture drag;
    drag.begin(edit);
    level->setConstant(60);
    whole->setConstant(7);
    level->setConstant(70, ChangeKind::Start);
    EXPECT_TRUE(drag.isOpen());
    editor.moveSegment(clip, kVideo, 50);
    EXPECT_FALSE(drag.isOpen());
    EXPECT_FALSE(drag.abort()) << "what came after it stays";
    EXPECT_EQ(added(), 2u);
    undo().undo();
    EXPECT_EQ(undoTitle(), "Change 2 parameters");
    oribund::EditGesture other;
    drag.begin(edit);
    level->setConstant(80);
    other.begin(edit);
    level->setConstant(90);
    drag.finish();
    EXPECT_TRUE(other.abort());
    EXPECT_EQ(level->constant(), 80.0);
    EXPECT_FALSE(drag.isOpen());
}

TEST_F(Gesture, OneThatIsFinishedCanBeTakenBackWhileItIsTheLastThingDone)
{
    oribund::EditGesture gesture;
    const auto drag = [&] {
        gesture.begin(edit);
        dragLevel({60, 70});
        EXPECT_FALSE(gesture.takeBack()) << "it is still open";
        gesture.finish();
    };
    const auto before = edit->snapshot();
    drag();
    EXPECT_TRUE(gesture.takeBack());
    EXPECT_EQ(edit->snapshot(), before);
    EXPECT_EQ(added(), 0u);
    EXPECT_FALSE(undo().canRedo());
    EXPECT_FALSE(gesture.takeBack());

    drag();
    undo().undo();
    EXPECT_FALSE(gesture.takeBack());
    EXPECT_TRUE(undo().canRedo());
    drag();
    undo().setClean();
    EXPECT_FALSE(gesture.takeBack()) << "the file has it";
}

TEST_F(Gesture, AnimatingAndKeyframesAreOneStepEach)
{
    const auto before = edit->snapshot();
    level->setFunctionType(EffectValParamFnType::Keyframed, 0.25);
    undo().endGesture();
    EXPECT_EQ(added(), 1u);
    EXPECT_EQ(undoTitle(), "Animate Level");
    level->addKeyframeAt(0.5, 80.0);
    EXPECT_EQ(undoTitle(), "Add keyframe to Level");
    level->setKeyframeValueAt(1, 30.0);
    EXPECT_EQ(undoTitle(), "Level 80 % to 30 %");
    level->graph()->moveKeyframe(1, 0.75);
    EXPECT_EQ(undoTitle(), "Move keyframe of Level");
    level->graph()->removeKeyframe(0);
    EXPECT_EQ(undoTitle(), "Remove keyframe from Level");
    level->setFunctionType(EffectValParamFnType::Constant, 0.0);
    EXPECT_EQ(undoTitle(), "Stop animating Level");
    undo().endGesture();
    EXPECT_EQ(added(), 6u);
    const auto after = edit->snapshot();
    for (int i = 0; i < 6; ++i)
        ASSERT_TRUE(undo().undo());
    EXPECT_EQ(edit->snapshot(), before);
    while (undo().redo()) {
    }
    EXPECT_EQ(edit->snapshot(), after);
}

TEST_F(Gesture, MovingManyKeyframesIsOneStepWithWhateverElseIsDoneToThem)
{
    const auto colour = param<oribund::ColourData>(tint, kColour);
    oribund::Graph1dBase& graph = *colour->graph();
    const auto drag = [&](int from, int step, double by, ChangeKind kind) {
        std::vector<int> indices;
        std::vector<double> times;
        for (int i = from; i < graph.size(); i += step) {
            indices.push_back(i);
            times.push_back(graph.timeAt(i) + by);
        }
        EXPECT_TRUE(graph.setKeyframeTimes(indices, times, kind));
    };
    colour->setFunctionType(EffectValParamFnType::Keyframed, 0.0);
    for (int i = 1; i < 64; ++i)
        colour->addKeyframeAt(i / 64.0, {{i / 64.0, 0.5, 1.0 - i / 64.0, 1.0}});
    undo().endGesture();
    const auto before = edit->snapshot();
    steps = undo().size();

    const auto expectOneStep = [&](const char* title) {
        const auto after = edit->snapshot();
        undo().endGesture();
        EXPECT_EQ(added(), 1u);
        EXPECT_EQ(undoTitle(), title);
        undo().undo();
        EXPECT_EQ(edit->snapshot(), before);
        undo().redo();
        EXPECT_EQ(edit->snapshot(), after);
        undo().undo();
    };
    for (const auto& [from, title] : {std::pair(24, "Move 40 keyframes of Colour"),   // all in one
                                      std::pair(61, "Move 3 keyframes of Colour")}) { // one by one
        drag(from, 1, 1 / 128.0, ChangeKind::Start);
        drag(from, 1, 1 / 128.0, ChangeKind::Continuation);
        expectOneStep(title);
        drag(from, 1, 1 / 256.0, ChangeKind::Start);
        drag(from, 1, -1 / 256.0, ChangeKind::Continuation);
        undo().endGesture();
        EXPECT_TRUE(undo().canRedo()) << "there and back again is nothing";
    }

    colour->setKeyframeValueAt(5, {{0.1, 0.2, 0.3, 0.4}}, ChangeKind::Start);
    graph.addKeyframe(0.7505, ChangeKind::Continuation);
    graph.removeKeyframe(0, ChangeKind::Continuation);
    drag(0, 2, 1 / 256.0, ChangeKind::Continuation);
    colour->setKeyframeValueAt(6, {{0.5, 0.5, 0.5, 0.5}}, ChangeKind::Continuation);
    graph.removeKeyframe(20, ChangeKind::Continuation);
    graph.moveKeyframe(3, 0.9999, ChangeKind::Continuation);
    drag(10, 1, 1 / 512.0, ChangeKind::Continuation);
    graph.addKeyframe(2.0, ChangeKind::Continuation);
    expectOneStep("Move 64 keyframes of Colour");
}

TEST_F(Gesture, ADragThatOverwritesGivesBackWhatItPassed)
{
    const ObjectId other = addPicture(200, 10, 500);
    const auto before = edit->snapshot();
    steps = undo().size();
    editor.moveSegment(clip, kVideo, 120, Collision::Overwrite, ChangeKind::Start);
    EXPECT_EQ(timeline().findSegment(other), nullptr);
    EXPECT_FALSE(editor.moveSegment(clip, kVideo, -1, Collision::Overwrite, ChangeKind::Continuation));
    EXPECT_EQ(segment(clip).start, 120) << "a place that is refused leaves the last good one";
    EXPECT_EQ(timeline().findSegment(other), nullptr);
    editor.moveSegment(clip, kVideo, 300, Collision::Overwrite, ChangeKind::Continuation);
    EXPECT_NE(timeline().findSegment(other), nullptr);
    undo().endGesture();
    EXPECT_EQ(added(), 1u);
    undo().undo();
    EXPECT_EQ(edit->snapshot(), before);
}

TEST_F(Gesture, SavedStateIsRecognisedAgain)
{
    undo().setClean();
    level->setConstant(60);
    EXPECT_FALSE(undo().isClean());
    undo().undo();
    EXPECT_TRUE(undo().isClean());
    undo().redo();
    undo().setClean();
    undo().undo();
    level->setConstant(70); // the way to what was saved is lost
    undo().endGesture();
    EXPECT_FALSE(undo().isClean());
    undo().undo();
    EXPECT_FALSE(undo().isClean());
}

TEST_F(Gesture, WhatIsDoneWithinABatchBelongsToItsStepAndStructureIsRefused)
{
    animate();
    const auto before = edit->snapshot();
    {
        const oribund::GraphBatch batch(*level->graph(), oribund::BatchReason::AddKeyframe,
                                        oribund::BatchReason::EndAddKeyframe, ChangeKind::Single);
        EXPECT_FALSE(editor.removeEffect(tint));
        {
            const oribund::EditModifier inner(edit, L"Inner");
            level->setKeyframeValueAt(0, 10.0);
        }
        level->addKeyframeAt(0.75, 30.0);
    }
    undo().endGesture();
    EXPECT_EQ(added(), 1u);
    EXPECT_TRUE(undo().undo());
    EXPECT_EQ(edit->snapshot(), before);
}

TEST_F(Gesture, ObserversMayEditWhileAStepIsUndone)
{
    struct Meddler {
        Bench& bench;
        ObjectId clip;
        oribund::EffectValParam<double>& whole;
        oribund::EffectValParam<bool>& on;
        int refused = 0;
        oribund::MethodCallback<Meddler, oribund::ValServerEvent<double>> callback{this, &Meddler::hear};

        int hear(const oribund::ValServerEvent<double>& event)
        {
            if (event.kind != oribund::ValEventKind::Changed)
                return 0;
            whole.setConstant(*event.value);
            on.setConstant(!on.constant());
            refused += !bench.editor.removeSegment(clip);
            refused += !bench.undo().undo();
            return 0;
        }
    };

    const auto whole = param<double>(tint, kWhole);
    Meddler meddler{*this, clip, *whole, *param<bool>(tint, kOn)};
    level->setConstant(60);
    level->setConstant(70);
    const auto before = edit->snapshot();
    meddler.callback.attach(level->constantServer().notifier());
    EXPECT_TRUE(undo().undo());
    EXPECT_EQ(meddler.refused, 2);
    EXPECT_EQ(whole->constant(), 60.0);
    EXPECT_EQ(undoTitle(), "Change 2 parameters");
    undo().undo();
    EXPECT_EQ(whole->constant(), 3.0);
    meddler.callback.detach();
    EXPECT_TRUE(undo().redoTitle() == L"Change 2 parameters") << "another way was taken";
    EXPECT_NE(edit->snapshot(), before);
}
