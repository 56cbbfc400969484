#include "tests/scenarios/keyframes/KeyframeScene.h"

namespace workbench::scenes
{
namespace
{

class BarScenario : public KeyframeScene
{
};

TEST_P(BarScenario, TheLeftButtonSelectsTheRightOneDragsAndEscapeRestores)
{
    const auto before = content();
    click(*bar, 52);
    click(*bar, 100);
    EXPECT_EQ(selected(), 3) << "both parameters' at 100";
    EXPECT_EQ(marks({50, 75, 100, 200}), "s-sk");
    EXPECT_EQ(currentFrame(), 0);

    grab(100, {104, 130, 120});
    EXPECT_EQ(keys(), "Level 70 120 200 | Colour 120");
    EXPECT_EQ(marks({50, 70, 100, 120, 200}), "-s-sk");
    stage->key(Key::Escape);
    EXPECT_EQ(content(), before);
    moveTo({140});
    release(140);
    EXPECT_EQ(content(), before) << "Escape has ended it";
    EXPECT_EQ(marks({50, 75, 100, 200}), "s-sk");
    EXPECT_EQ(steps(), 0);
    EXPECT_FALSE(undo().canRedo());

    grab(100, {104, 130, 120});
    release(120);
    const auto dragged = content();
    EXPECT_EQ(keys(), "Level 70 120 200 | Colour 120");
    EXPECT_EQ(selected(), 3);
    EXPECT_EQ(steps(), 1);
    EXPECT_EQ(undoTitle(), "Move 3 keyframes");
    undo().undo();
    EXPECT_EQ(content(), before);
    EXPECT_EQ(marks({50, 70, 100, 120, 200}), "s-s-k") << "the selection goes with them";
    undo().redo();
    EXPECT_EQ(content(), dragged);
    EXPECT_EQ(marks({50, 70, 100, 120, 200}), "-s-sk");
}

TEST_P(BarScenario, NothingPassesANeighbourOrTheEndAndALoneKeyframeIsLetGo)
{
    const auto before = content();
    grab(100, {110, 190, 230, 249});
    EXPECT_EQ(keys(), "Level 50 199 200 | Colour 199");
    moveTo({60, 20});
    EXPECT_EQ(keys(), "Level 50 51 200 | Colour 51");
    release(20);
    EXPECT_EQ(steps(), 1);
    undo().undo();
    EXPECT_EQ(content(), before);

    click(*bar, 50);
    click(*bar, 50);
    EXPECT_EQ(selected(), 0);
    grab(200, {220, 249, 300});
    EXPECT_EQ(keys(), "Level 50 100 250 | Colour 100");
    release(300);
    EXPECT_EQ(selected(), 0) << "it was selected for the drag alone";
    EXPECT_EQ(steps(), 1);
    EXPECT_EQ(levelAt(100), 60.0);
}

TEST_P(BarScenario, KeysDoWhatTheMouseDoes)
{
    click(*bar, 30);
    EXPECT_EQ(currentFrame(), 30);
    stage->key(Key::Right, Event::kCtrl);
    EXPECT_EQ(currentFrame(), 50);
    click(*bar, 100, MouseButton::Left, Event::kCtrl);
    EXPECT_EQ(selected(), 2);
    stage->key(Key::Right, Event::kAlt);
    stage->key(Key::Right, Event::kAlt);
    EXPECT_EQ(keys(), "Level 50 102 200 | Colour 102");
    EXPECT_EQ(steps(), 2);
    stage->key(Key::Delete);
    EXPECT_EQ(keys(), "Level 50 200") << "a parameter without keyframes is constant again";
    EXPECT_EQ(steps(), 3);
    undoAll();
    EXPECT_EQ(keys(), "Level 50 100 200 | Colour 100");
}

ON_BOTH_STAGES(BarScenario);

} // namespace
} // namespace workbench::scenes
