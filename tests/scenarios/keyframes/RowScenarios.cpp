#include "tests/scenarios/keyframes/KeyframeScene.h"

#include "oribund/host/toolkit/entries/ScrubLabel.h"
#include "oribund/host/toolkit/widgets/ValSlider.h"

namespace workbench::scenes
{
namespace
{

using oribund::NumericEntry;
using oribund::ScrubLabel;
using oribund::ValSlider;
using oribund::WString;

class RowScenario : public KeyframeScene
{
protected:
    RowScenario()
        : slider(in<ValSlider>(*levelRow))
        , entry(in<NumericEntry>(*levelRow))
        , name(in<ScrubLabel>(*levelRow))
        , whole(in<NumericEntry>(*wholeRow))
    {
    }

    double wholeNow() { return param<double>(tint, sample::kWhole)->constant(); }

    int pixelOf(double value) { return static_cast<int>(slider.xOf(value)); }

    ValSlider& slider;
    NumericEntry& entry;
    ScrubLabel& name;
    NumericEntry& whole;
};

TEST_P(RowScenario, ASliderDragIsOneStepOnTheKeyframeHereOrOnANewOne)
{
    const auto before = content();
    goTo(50);
    press(slider, pixelOf(20));
    moveTo({pixelOf(50), pixelOf(70), pixelOf(90)});
    release(pixelOf(90));
    EXPECT_EQ(keys(), "Level 50 100 200 | Colour 100");
    EXPECT_NEAR(levelAt(50), 90.0, 1.0);
    EXPECT_EQ(levelAt(100), 60.0);
    EXPECT_EQ(steps(), 1);

    goTo(150);
    const double here = levelAt(150);
    press(slider, pixelOf(here));
    moveTo({pixelOf(30), pixelOf(10)});
    EXPECT_EQ(keys(), "Level 50 100 150 200 | Colour 100");
    stage->key(Key::Escape);
    release(pixelOf(10));
    EXPECT_EQ(keys(), "Level 50 100 200 | Colour 100");
    EXPECT_EQ(levelAt(150), here);
    EXPECT_EQ(slider.getValue(), here);
    EXPECT_EQ(steps(), 1);
    press(slider, pixelOf(here));
    moveTo({pixelOf(30), pixelOf(10)});
    release(pixelOf(10));
    EXPECT_NEAR(levelAt(150), 10.0, 1.0);
    EXPECT_EQ(marks({150}), "k");
    undoAll();
    EXPECT_EQ(content(), before);
}

TEST_P(RowScenario, WhatIsTypedIsCalculatedAndNonsenseStaysToBeMended)
{
    const auto before = content();
    enter(whole, "2*45+10");
    EXPECT_EQ(wholeNow(), 100.0);
    EXPECT_EQ(shownIn(whole), "100");
    EXPECT_FALSE(whole.hasFocus()) << "the keyboard is handed back";
    goTo(100);
    enter(entry, "50%");
    EXPECT_EQ(levelAt(100), 50.0);
    EXPECT_EQ(steps(), 2);

    enter(entry, "2*(3");
    EXPECT_EQ(shownIn(entry), "2*(3");
    EXPECT_FALSE(entry.getProblem().empty());
    EXPECT_EQ(entry.tooltip(), oribund::UIString(entry.getProblem()));
    EXPECT_TRUE(entry.hasFocus());
    EXPECT_EQ(steps(), 2);
    stage->type("0)");
    stage->key(Key::Enter);
    EXPECT_EQ(levelAt(100), 60.0) << "mended";
    enter(entry, "much");
    stage->key(Key::Escape);
    EXPECT_EQ(shownIn(entry), "60 %");
    EXPECT_TRUE(entry.getProblem().empty());
    EXPECT_FALSE(entry.hasFocus());
    EXPECT_EQ(steps(), 3);
    undoAll();
    EXPECT_EQ(content(), before);
    EXPECT_EQ(shownIn(whole), "3");
}

TEST_P(RowScenario, KeysStepAndTheWheelOnlyWithTheKeyboard)
{
    goTo(100);
    stage->wheel(entry, {5, 5}, 1.0);
    stage->wheel(slider, {5, 5}, 1.0);
    EXPECT_EQ(steps(), 0);
    click(entry);
    stage->key(Key::Up);
    EXPECT_EQ(levelAt(100), 61.0);
    stage->key(Key::Down, Event::kShift);
    EXPECT_EQ(levelAt(100), 51.0);
    stage->key(Key::Up, Event::kCtrl);
    EXPECT_NEAR(levelAt(100), 51.1, 1e-9);
    stage->wheel(entry, {5, 5}, -1.0);
    EXPECT_NEAR(levelAt(100), 50.1, 1e-9);
    EXPECT_EQ(steps(), 4);
    EXPECT_EQ(keys(), "Level 50 100 200 | Colour 100");
}

TEST_P(RowScenario, TheNameIsAHandleThatEscapeLetsGoAndADoubleClickResets)
{
    const auto before = content();
    goTo(100);
    press(name, 20);
    moveTo({24, 30, 40});
    EXPECT_GT(levelAt(100), 60.0);
    stage->key(Key::Escape);
    moveTo({60});
    release(60);
    EXPECT_EQ(content(), before);
    EXPECT_EQ(steps(), 0);
    press(name, 20);
    moveTo({24, 30, 40}, Event::kShift);
    release(40);
    EXPECT_GT(levelAt(100), 70.0);
    EXPECT_EQ(steps(), 1);

    click(name, 20);
    stage->pressAgain(name, {20, 5});
    EXPECT_EQ(levelAt(100), 50.0) << "the default";
    EXPECT_EQ(steps(), 2);
    click(in<ScrubLabel>(*wholeRow), 20);
    stage->pressAgain(in<ScrubLabel>(*wholeRow), {20, 5});
    EXPECT_EQ(steps(), 2) << "that is the default already";
}

ON_BOTH_STAGES(RowScenario);

} // namespace
} // namespace workbench::scenes
