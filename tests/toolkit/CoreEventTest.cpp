#include "CoreProbe.h"

#include "oribund/host/toolkit/core/EventRouter.h"

#include <gtest/gtest.h>

namespace oribund::test
{
namespace
{

TEST(Pointer, AnEventReachesTheInnermostGlobInItsOwnCoordinates)
{
    Scene scene;
    Probe* outer = scene.add("outer", {10, 10, 110, 90});
    Probe* inner = scene.add("inner", {20, 20, 60, 60}, outer);
    inner->takes = true;

    EXPECT_TRUE(scene.canvas.inject(Event::mousePress({35, 40})));
    ASSERT_EQ(inner->count(EventCode::MousePress), 1u);
    EXPECT_EQ(inner->last().position, (XY<int>{5, 10}));
    EXPECT_EQ(inner->last().canvasPosition, (XY<int>{35, 40}));
    EXPECT_EQ(outer->count(EventCode::MousePress), 0u) << "it was taken";

    scene.canvas.inject(Event::mouseRelease({35, 40}));
    inner->takes = false;
    outer->takes = true;
    EXPECT_TRUE(scene.canvas.inject(Event::mouseWheel({35, 40}, 1.5)));
    EXPECT_EQ(inner->count(EventCode::MouseWheel), 1u);
    ASSERT_EQ(outer->count(EventCode::MouseWheel), 1u) << "what is not taken goes to the parent";
    EXPECT_EQ(outer->last().position, (XY<int>{25, 30}));
    EXPECT_EQ(outer->last().wheel, 1.5);

    outer->takes = false;
    EXPECT_FALSE(scene.canvas.inject(Event::mouseWheel({35, 40}, 1.0)));
    EXPECT_FALSE(scene.canvas.inject(Event::mousePress({500, 500})));
}

TEST(Pointer, OverlappingGlobsAreHitTopmostFirstAndHiddenOnesNever)
{
    Scene scene;
    Probe* below = scene.add("below", {0, 0, 50, 50});
    Probe* above = scene.add("above", {0, 0, 50, 50});
    below->takes = above->takes = true;

    scene.canvas.inject(Event::mouseWheel({10, 10}, 1));
    above->setVisible(false);
    scene.canvas.inject(Event::mouseWheel({10, 10}, 1));
    EXPECT_EQ(above->count(EventCode::MouseWheel), 1u);
    EXPECT_EQ(below->count(EventCode::MouseWheel), 1u);

    Probe* outside = scene.add("outside", {190, 90, 260, 160});
    outside->takes = true;
    EXPECT_FALSE(scene.canvas.inject(Event::mouseWheel({230, 120}, 1))) << "a child is clipped by its parent";
    EXPECT_TRUE(scene.canvas.inject(Event::mouseWheel({195, 95}, 1)));
}

TEST(Pointer, ADragStaysWithTheGlobThatTookThePress)
{
    Scene scene;
    std::string journal;
    Probe* a = scene.add("a", {0, 0, 50, 50});
    Probe* b = scene.add("b", {50, 0, 100, 50});
    a->takes = b->takes = true;
    a->journal = b->journal = &journal;

    scene.canvas.inject(Event::mouseMove({10, 10}));
    scene.canvas.inject(Event::mousePress({10, 10}));
    scene.canvas.inject(Event::mouseMove({70, 10}, MouseButton::Left));
    scene.canvas.inject(Event::mouseMove({900, -50}, MouseButton::Left));
    EXPECT_EQ(a->last().position, (XY<int>{900, -50})) << "also far outside";
    scene.canvas.inject(Event::mouseRelease({70, 10}));
    scene.canvas.inject(Event::mouseMove({71, 10}));
    EXPECT_EQ(journal, "a> a~ a+ a~ a~ a- a< b> b~ ");
}

TEST(Pointer, ASecondButtonBelongsToTheDrag)
{
    Scene scene;
    Probe* a = scene.add("a", {0, 0, 50, 50});
    Probe* b = scene.add("b", {50, 0, 100, 50});
    a->takes = b->takes = true;

    scene.canvas.inject(Event::mousePress({10, 10}));
    Event right = Event::mousePress({60, 10}, MouseButton::Right);
    right.buttons = 1 | 2;
    scene.canvas.inject(right);
    Event up = Event::mouseRelease({60, 10}, MouseButton::Right);
    up.buttons = 1;
    scene.canvas.inject(up);
    scene.canvas.inject(Event::mouseMove({60, 10}, MouseButton::Left));
    EXPECT_EQ(b->count(EventCode::MousePress), 0u);
    EXPECT_EQ(b->count(EventCode::MouseMove), 0u) << "one button is still down";
    EXPECT_EQ(a->count(EventCode::MousePress), 2u);
}

TEST(Pointer, ADragIsCancelledWhenItsGlobGoesOutOfUse)
{
    for (const int how : {0, 1, 2, 3, 4}) {
        Scene scene;
        Probe* a = scene.add("a", {0, 0, 50, 50});
        a->takes = true;
        std::unique_ptr<Glob> kept;
        scene.canvas.inject(Event::mousePress({10, 10}));
        switch (how) {
        case 0:
            a->setVisible(false);
            break;
        case 1:
            a->setEnabled(false);
            break;
        case 2:
            scene.panel->setActive(false);
            break;
        case 3:
            kept = scene.panel->removeChild(*a);
            break;
        case 4:
            scene.panel->close();
            break;
        }
        EXPECT_EQ(a->count(EventCode::MouseCancel), 1u) << how;
        scene.canvas.inject(Event::mouseMove({20, 10}, MouseButton::Left));
        scene.canvas.inject(Event::mouseRelease({20, 10}));
        EXPECT_EQ(a->count(EventCode::MouseRelease), 0u) << how;
    }
}

TEST(Pointer, APressAfterALostReleaseCancelsTheOldDrag)
{
    Scene scene;
    std::string journal;
    Probe* a = scene.add("a", {0, 0, 50, 50});
    Probe* b = scene.add("b", {50, 0, 100, 50});
    a->takes = b->takes = true;
    a->journal = b->journal = &journal;
    scene.canvas.inject(Event::mousePress({10, 10}));
    scene.canvas.inject(Event::mousePress({60, 10}));
    EXPECT_EQ(journal, "a+ ax b+ ");
}

TEST(Pointer, AClickOnADisabledGlobGoesNowhereButItsMenuIsThePanels)
{
    Scene scene;
    Probe* outer = scene.add("outer", {0, 0, 100, 100});
    Probe* inner = scene.add("inner", {0, 0, 50, 50}, outer);
    outer->takes = inner->takes = true;
    inner->setEnabled(false);

    EXPECT_TRUE(scene.canvas.inject(Event::mousePress({10, 10})));
    scene.canvas.inject(Event::mouseRelease({10, 10}));
    EXPECT_EQ(outer->count(EventCode::MousePress), 0u);
    scene.canvas.inject(Event::mousePress({10, 10}, MouseButton::Right));
    EXPECT_EQ(outer->count(EventCode::MousePress), 1u);
    EXPECT_EQ(inner->count(EventCode::MousePress), 0u);
}

TEST(Destruction, AGlobMayGoInAnyOfItsEvents)
{
    for (const EventCode when : {EventCode::MouseEnter, EventCode::MousePress, EventCode::MouseMove,
                                 EventCode::MouseRelease, EventCode::FocusIn, EventCode::FocusOut, EventCode::KeyPress,
                                 EventCode::MouseCancel, EventCode::MouseLeave}) {
        Scene scene;
        Probe* a = scene.add("a", {0, 0, 50, 50});
        Probe* b = scene.add("b", {50, 0, 100, 50});
        a->setFocusable(true);
        b->setFocusable(true);
        a->takes = b->takes = true;
        GlobRef<Probe> watched(a);
        a->onEvent = [=](const Event& event) {
            if (event.code == when)
                delete a;
        };
        scene.canvas.inject(Event::mouseMove({10, 10}));
        scene.canvas.inject(Event::mousePress({10, 10}));
        scene.canvas.inject(Event::mouseMove({12, 10}, MouseButton::Left));
        scene.canvas.inject(Event::keyPress(Key::Up));
        scene.canvas.inject(Event::mouseRelease({12, 10}));
        scene.canvas.inject(Event::mousePress({12, 10}));
        scene.canvas.inject(Event::mousePress({60, 10}));
        scene.canvas.inject(Event::mouseRelease({60, 10}));
        scene.canvas.inject(Event::mouseMove({61, 10}));
        EXPECT_FALSE(watched) << "the event " << std::hex << static_cast<unsigned>(when) << " never came";
        EXPECT_TRUE(b->hasFocus());
        EXPECT_EQ(b->count(EventCode::MouseRelease), 1u) << "life goes on";
    }
}

TEST(Destruction, TheWholePanelMayGoInAnEventOfAChild)
{
    Scene scene;
    Probe* a = scene.add("a", {0, 0, 50, 50});
    a->setFocusable(true);
    a->onEvent = [&](const Event& event) {
        if (event.code == EventCode::MousePress)
            scene.panel.reset();
    };
    scene.canvas.inject(Event::mousePress({10, 10}));
    EXPECT_EQ(scene.canvas.focusOwner(), nullptr);
    EXPECT_FALSE(scene.canvas.inject(Event::mouseMove({10, 10}, MouseButton::Left)));
    EXPECT_FALSE(scene.canvas.inject(Event::keyPress(Key::Tab)));
}

TEST(Keyboard, KeysGoToTheFocusOwnerThenUp)
{
    Scene scene;
    Probe* outer = scene.add("outer", {0, 0, 100, 100});
    Probe* inner = scene.add("inner", {0, 0, 50, 50}, outer);
    inner->setFocusable(true);
    ASSERT_TRUE(inner->takeFocus());
    EXPECT_EQ(scene.canvas.focusOwner(), inner);

    outer->takes = true;
    EXPECT_TRUE(scene.canvas.inject(Event::character(L'a')));
    EXPECT_EQ(inner->last().text, L"a");
    EXPECT_EQ(outer->count(EventCode::KeyPress), 1u);

    inner->dropFocus();
    EXPECT_EQ(scene.canvas.focusOwner(), nullptr);
    EXPECT_FALSE(scene.canvas.inject(Event::keyPress(Key::Up)));
    EXPECT_EQ(inner->count(EventCode::KeyPress), 1u);
}

TEST(Keyboard, EscapeDuringADragGoesToWhoDragsFirst)
{
    Scene scene;
    Probe* dragged = scene.add("dragged", {0, 0, 50, 50});
    Probe* focused = scene.add("focused", {50, 0, 100, 50});
    focused->setFocusable(true);
    dragged->takes = true;
    scene.canvas.inject(Event::mousePress({10, 10}));
    ASSERT_TRUE(focused->takeFocus());

    EXPECT_TRUE(scene.canvas.inject(Event::keyPress(Key::Escape)));
    EXPECT_EQ(dragged->count(EventCode::KeyPress), 1u);
    EXPECT_EQ(focused->count(EventCode::KeyPress), 0u);
    scene.canvas.inject(Event::mouseRelease({10, 10}));
    scene.canvas.inject(Event::keyPress(Key::Escape));
    EXPECT_EQ(focused->count(EventCode::KeyPress), 1u);
}

TEST(Keyboard, FocusFollowsThePress)
{
    Scene scene;
    std::string journal;
    Probe* a = scene.add("a", {0, 0, 50, 50});
    Probe* b = scene.add("b", {50, 0, 100, 50});
    Probe* label = scene.add("label", {0, 0, 20, 20}, b);
    for (Probe* p : {a, b, label}) {
        p->journal = &journal;
        p->takes = true;
    }
    a->setFocusable(true);
    b->setFocusable(true);

    scene.canvas.inject(Event::mousePress({10, 10}));
    scene.canvas.inject(Event::mouseRelease({10, 10}));
    journal.clear();
    scene.canvas.inject(Event::mousePress({60, 10}));
    EXPECT_EQ(journal, "a) b( label+ ") << "the old one is told before anything is done, so that it can commit";
    scene.canvas.inject(Event::mouseRelease({60, 10}));

    scene.canvas.inject(Event::mousePress({150, 90}));
    EXPECT_EQ(scene.canvas.focusOwner(), nullptr) << "a press beside everything takes the focus away";
}

TEST(Keyboard, OnlyWhatCanBeUsedTakesTheFocus)
{
    Scene scene;
    Probe* a = scene.add("a", {0, 0, 50, 50});
    EXPECT_FALSE(a->takeFocus()) << "not focusable";
    a->setFocusable(true);
    a->setEnabled(false);
    EXPECT_FALSE(a->takeFocus());
    a->setEnabled(true);
    scene.panel->setVisible(false);
    EXPECT_FALSE(a->takeFocus());
    scene.panel->setVisible(true);
    EXPECT_TRUE(a->takeFocus());
    EXPECT_TRUE(a->takeFocus()) << "asking again is fine";
    EXPECT_EQ(a->count(EventCode::FocusIn), 1u);

    a->setEnabled(false);
    EXPECT_FALSE(a->hasFocus());
    EXPECT_EQ(a->count(EventCode::FocusOut), 1u);
}

TEST(Keyboard, WhatLosesTheFocusMayMoveIt)
{
    Scene scene;
    Probe* a = scene.add("a", {0, 0, 50, 50});
    Probe* b = scene.add("b", {50, 0, 100, 50});
    Probe* c = scene.add("c", {100, 0, 150, 50});
    for (Probe* p : {a, b, c})
        p->setFocusable(true);
    a->takeFocus();
    a->onEvent = [c](const Event& event) {
        if (event.code == EventCode::FocusOut)
            c->takeFocus();
    };
    EXPECT_FALSE(b->takeFocus());
    EXPECT_TRUE(c->hasFocus());
    EXPECT_EQ(b->count(EventCode::FocusIn), 0u);
}

TEST(Messages, GoToTheSenderThenUpUntilTaken)
{
    Scene scene;
    Probe* outer = scene.add("outer", {0, 0, 100, 100});
    Probe* inner = scene.add("inner", {0, 0, 50, 50}, outer);
    EXPECT_FALSE(inner->sendMsg("hello"));
    EXPECT_EQ(inner->last().message, "hello");
    EXPECT_EQ(outer->last().sender, inner);
    inner->takes = true;
    EXPECT_TRUE(inner->sendMsg("again"));
    EXPECT_EQ(outer->last().message, "hello");
    EXPECT_FALSE(outer->sendMsg("up")) << "never down";
    EXPECT_EQ(inner->last().message, "again");

    inner->takes = false;
    inner->onEvent = [inner](const Event&) { delete inner; };
    EXPECT_FALSE(inner->sendMsg("destroys the sender"));
    EXPECT_EQ(outer->last().message, "destroys the sender");
}

} // namespace
} // namespace oribund::test
