#include "tests/scenarios/keyframes/KeyframeScene.h"

#include "oribund/host/toolkit/entries/ScrubLabel.h"
#include "oribund/host/toolkit/widgets/Button.h"
#include "oribund/host/toolkit/widgets/ValSlider.h"

#include <functional>
#include <string>

namespace workbench::scenes
{
namespace
{

using oribund::NumericEntry;
using oribund::ScrubLabel;
using oribund::ValSlider;

class FaultScenario : public KeyframeScene
{
protected:
    FaultScenario() { goTo(100); }

    /** Begins a drag and leads it some way, in turn on the bar, a slider and a name. */
    void forEachDrag(const std::function<void(const std::string& which)>& then)
    {
        grab(100, {104, 120});
        then("bar");
        press(in<ValSlider>(*levelRow), 60);
        moveTo({70, 80});
        then("slider");
        press(in<ScrubLabel>(*levelRow), 20);
        moveTo({26, 40});
        then("name");
    }

    /** Goes on with a drag whose end is near. */
    void moveOnAndRelease()
    {
        moveTo({130, 140});
        stage->key(Key::Escape);
        moveTo({150});
        release(150);
    }
};

TEST_P(FaultScenario, APanelThatGoesInADragLeavesOneStep)
{
    const auto before = content();
    forEachDrag([&](const std::string& which) {
        const auto dragged = content();
        EXPECT_NE(dragged, before) << which;
        stage->show(nullptr);
        moveOnAndRelease();
        EXPECT_EQ(content(), dragged) << which << ": nothing is lost";
        EXPECT_EQ(steps(), 1) << which;
        undo().undo();
        EXPECT_EQ(content(), before) << which;
        undo().redo();
        EXPECT_EQ(content(), dragged) << which;
        undo().undo();
        showPanel();
    });
}

TEST_P(FaultScenario, AnEffectThatIsRemovedInADragEndsItAndComesBackAsItWas)
{
    const auto before = content();
    forEachDrag([&](const std::string& which) {
        const auto dragged = content();
        ASSERT_TRUE(editor.removeEffect(tint)) << which;
        EXPECT_EQ(marks({50, 100, 120, 200}), "----") << which;
        moveOnAndRelease();
        EXPECT_EQ(steps(), 2) << which;
        undo().undo();
        EXPECT_EQ(content(), dragged) << which;
        undo().undo();
        EXPECT_EQ(content(), before) << which;
        EXPECT_EQ(marks({50, 75, 200}), "k-k") << which;
        EXPECT_TRUE(levelRow->isEnabled()) << which;
        EXPECT_EQ(in<ValSlider>(*levelRow).getValue(), 60.0) << which;
    });
    grab(200, {210});
    release(210);
    EXPECT_EQ(keys(), "Level 50 100 210 | Colour 100");
}

TEST_P(FaultScenario, WhatIsTypedForAParameterIsNotWrittenToTheOneInItsPlace)
{
    const auto before = content();
    NumericEntry& entry = in<NumericEntry>(*levelRow);
    click(entry);
    stage->type("77");
    editor.removeEffect(tint);
    undo().undo();
    stage->key(Key::Enter);
    EXPECT_EQ(content(), before);
    EXPECT_EQ(shownIn(entry), "60 %");
    enter(entry, "78");
    EXPECT_EQ(levelAt(100), 78.0);
}

TEST_P(FaultScenario, NothingIsEditedAfterTheEditIsLockedAndNothingIsLost)
{
    const auto before = content();
    forEachDrag([&](const std::string& which) {
        const auto dragged = content();
        edit->setReadOnly(true);
        moveOnAndRelease();
        EXPECT_EQ(content(), dragged) << which;
        edit->setReadOnly(false);
        EXPECT_EQ(steps(), 1) << which;
        undo().undo();
        EXPECT_EQ(content(), before) << which;
    });
    NumericEntry& entry = in<NumericEntry>(*levelRow);
    click(entry);
    stage->type("77");
    edit->setReadOnly(true);
    stage->key(Key::Enter);
    click(in<oribund::Button>(*buttons, 2)); // add
    click(*bar, 200);
    stage->key(Key::Delete);
    EXPECT_EQ(content(), before);
    EXPECT_EQ(steps(), 0);
    EXPECT_TRUE(undo().canRedo());
}

TEST_P(FaultScenario, AnUndoInADragTakesBackTheWholeOfItAndEndsIt)
{
    const auto before = content();
    forEachDrag([&](const std::string& which) {
        undo().undo();
        EXPECT_EQ(content(), before) << which;
        moveTo({130, 140});
        release(140);
        EXPECT_EQ(steps(), 0) << which;
        EXPECT_TRUE(undo().canRedo()) << which;
        EXPECT_EQ(content(), before) << which;
    });
}

TEST_P(FaultScenario, ABarWithoutWidthAndAnEditWithoutTracksTakeWhatComes)
{
    grab(100, {104, 120});
    bar->resize(0.0, bar->getHeight());
    moveOnAndRelease();
    grab(0, {5, 20});
    release(20);
    bar->resize(250.0, bar->getHeight());
    undoAll();
    EXPECT_EQ(keys(), "Level 50 100 200 | Colour 100");

    grab(100, {104, 120});
    for (const auto& track : content().tracks)
        EXPECT_TRUE(editor.removeTrack(track.id));
    moveOnAndRelease();
    click(*bar, 100, MouseButton::Right);
    click(*timeBar, 100);
    click(in<NumericEntry>(*levelRow));
    stage->key(Key::Delete);
    EXPECT_TRUE(content().tracks.empty());
    undoAll();
    EXPECT_EQ(keys(), "Level 50 100 200 | Colour 100");
    EXPECT_EQ(marks({50, 75, 200}), "k-k");
}

ON_BOTH_STAGES(FaultScenario);

} // namespace
} // namespace workbench::scenes
