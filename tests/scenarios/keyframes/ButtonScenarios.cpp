#include "tests/scenarios/keyframes/KeyframeScene.h"

#include "oribund/host/toolkit/widgets/Button.h"

namespace workbench::scenes
{
namespace
{

using oribund::Button;

enum : std::size_t { kPrevious, kNext, kAdd, kDelete };

class ButtonScenario : public KeyframeScene
{
protected:
    Button& button(std::size_t index) { return in<Button>(*buttons, index); }

    int walk(std::size_t index)
    {
        click(button(index));
        return currentFrame();
    }
};

TEST_P(ButtonScenario, PreviousAndNextWalkTheKeyframesOfAllParameters)
{
    EXPECT_FALSE(button(kPrevious).isEnabled());
    EXPECT_EQ(walk(kNext), 50);
    EXPECT_EQ(walk(kNext), 100);
    EXPECT_EQ(walk(kNext), 200);
    EXPECT_EQ(walk(kNext), 200);
    EXPECT_EQ(walk(kPrevious), 100);
    goTo(99);
    EXPECT_EQ(walk(kPrevious), 50);
    goTo(250);
    EXPECT_FALSE(button(kNext).isEnabled());
    EXPECT_EQ(steps(), 0);
}

TEST_P(ButtonScenario, AddAndRemoveAreAStepEachForEveryAnimatedParameter)
{
    const auto before = content();
    goTo(70);
    click(button(kAdd));
    EXPECT_EQ(keys(), "Level 50 70 100 200 | Colour 70 100");
    EXPECT_NEAR(levelAt(70), 36.0, 1e-9) << "where the curve was";
    EXPECT_EQ(undoTitle(), "Add keyframes");
    EXPECT_FALSE(button(kAdd).isEnabled());
    EXPECT_EQ(marks({70}), "k");
    click(button(kDelete));
    EXPECT_EQ(keys(), "Level 50 100 200 | Colour 100");
    EXPECT_EQ(steps(), 2);
    EXPECT_FALSE(button(kDelete).isEnabled());

    click(*bar, 200);
    EXPECT_TRUE(button(kDelete).isEnabled()) << "something is selected, though elsewhere";
    click(button(kDelete));
    EXPECT_EQ(keys(), "Level 50 100 | Colour 100");
    EXPECT_EQ(currentFrame(), 70);
    EXPECT_EQ(selected(), 0);
    EXPECT_EQ(steps(), 3);
    undoAll();
    EXPECT_EQ(content(), before);
}

TEST_P(ButtonScenario, APressStopsPlayBeforeItDoesAnything)
{
    goTo(30);
    int stops = 0;
    for (const std::size_t index : {kAdd, kNext, kPrevious, kDelete}) {
        const int before = vob.currentFrame();
        vob.startPlay();
        click(button(index));
        EXPECT_FALSE(vob.isPlaying()) << index;
        ASSERT_EQ(transport.stoppedAt.size(), static_cast<std::size_t>(++stops)) << index;
        EXPECT_EQ(transport.stoppedAt.back(), before) << index;
    }
    EXPECT_EQ(keys(), "Level 50 100 200 | Colour 100");
    EXPECT_EQ(steps(), 2);
}

ON_BOTH_STAGES(ButtonScenario);

} // namespace
} // namespace workbench::scenes
