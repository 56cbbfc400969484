#include "CoreProbe.h"

#include "oribund/host/toolkit/core/EventRouter.h"

#include <gtest/gtest.h>

#include <utility>

namespace oribund::test
{
namespace
{

/** Two globs side by side that take what comes, and what they write down. */
class Events : public testing::Test
{
protected:
    Events()
    {
        for (Probe* probe : {a, b}) {
            probe->journal = &journal;
            probe->takes = true;
        }
    }

    Probe* addInside(const Kt::Box<int>& box)
    {
        Probe* const made = scene.add("in", box, a);
        made->journal = &journal;
        return made;
    }

    bool inject(const Event& event) { return scene.canvas.inject(event); }

    bool wheel(const XY<int>& at) { return inject(Event::mouseWheel(at, 1.5)); }

    std::string told() { return std::exchange(journal, {}); }

    std::string journal;
    Scene scene;
    Probe* a = scene.add("a", {0, 0, 50, 50});
    Probe* b = scene.add("b", {50, 0, 100, 50});
};

TEST_F(Events, ReachTheInnermostGlobAndThenWhatItStandsIn)
{
    Probe* inner = addInside({20, 20, 40, 40});
    EXPECT_TRUE(wheel({25, 30}));
    EXPECT_EQ(told(), "ino ao ") << "what is not taken goes to the parent";
    EXPECT_EQ(inner->last().position, (XY<int>{5, 10}));
    EXPECT_EQ(inner->last().canvasPosition, (XY<int>{25, 30}));
    EXPECT_EQ(a->last().position, (XY<int>{25, 30}));
    EXPECT_EQ(a->last().wheel, 1.5);
    inner->takes = true;
    EXPECT_TRUE(wheel({25, 30}));
    EXPECT_EQ(told(), "ino ");
    a->takes = inner->takes = false;
    EXPECT_FALSE(wheel({25, 30}));
    EXPECT_FALSE(inject(Event::mousePress({500, 500})));
}

TEST_F(Events, HitTheTopmostGlobAndNoneThatIsHiddenOrCutOff)
{
    Probe* above = scene.add("above", {0, 0, 50, 50});
    above->takes = true;
    wheel({10, 10});
    EXPECT_EQ(told(), "");
    above->setVisible(false);
    wheel({10, 10});
    EXPECT_EQ(told(), "ao ");
    scene.add("outside", {190, 90, 260, 160})->takes = true;
    EXPECT_FALSE(wheel({230, 120})) << "a child is clipped by its parent";
    EXPECT_TRUE(wheel({195, 95}));
}

TEST_F(Events, OfADragGoToTheGlobThatTookThePress)
{
    inject(Event::mouseMove({10, 10}));
    scene.press({10, 10});
    scene.drag({70, 10});
    scene.drag({900, -50});
    EXPECT_EQ(a->last().position, (XY<int>{900, -50})) << "also far outside";
    scene.release({70, 10});
    inject(Event::mouseMove({71, 10}));
    EXPECT_EQ(told(), "a> a~ a+ a~ a~ a- a< b> b~ ");
    scene.press({10, 10});
    scene.press({60, 10});
    EXPECT_EQ(told(), "a+ ax b+ ") << "a press after a lost release cancels the old drag";
}

TEST_F(Events, OfASecondButtonBelongToTheDrag)
{
    scene.press({10, 10});
    Event right = Event::mousePress({60, 10}, MouseButton::Right);
    right.buttons = 1 | 2;
    inject(right);
    Event up = Event::mouseRelease({60, 10}, MouseButton::Right);
    up.buttons = 1;
    inject(up);
    scene.drag({60, 10});
    EXPECT_EQ(told(), "a+ a+ a- a~ ") << "one button is still down";
}

TEST_F(Events, OfADragAreCancelledWhenItsGlobGoesOutOfUse)
{
    std::unique_ptr<Glob> kept;
    const std::function<void(Scene&, Probe&)> ways[] = {
        [](Scene&, Probe& p) { p.setVisible(false); }, [](Scene&, Probe& p) { p.setEnabled(false); },
        [](Scene& s, Probe&) { s.panel->setActive(false); },
        [&](Scene& s, Probe& p) { kept = s.panel->removeChild(p); }, [](Scene& s, Probe&) { s.panel->close(); }};
    for (const auto& goOutOfUse : ways) {
        Scene other;
        Probe* probe = other.add("p", {0, 0, 50, 50});
        probe->takes = true;
        other.press({10, 10});
        goOutOfUse(other, *probe);
        EXPECT_EQ(probe->count(EventCode::MouseCancel), 1);
        other.drag({20, 10});
        other.release({20, 10});
        EXPECT_EQ(probe->count(EventCode::MouseRelease), 0);
        kept.reset();
    }
}

TEST_F(Events, OnADisabledGlobGoNowhereButItsMenuIsThePanels)
{
    Probe* inner = addInside({0, 0, 20, 20});
    inner->takes = true;
    inner->setEnabled(false);
    EXPECT_TRUE(inject(Event::mousePress({10, 10})));
    scene.release({10, 10});
    EXPECT_EQ(a->count(EventCode::MousePress), 0);
    inject(Event::mousePress({10, 10}, MouseButton::Right));
    EXPECT_EQ(a->count(EventCode::MousePress), 1);
    EXPECT_EQ(inner->count(EventCode::MousePress), 0);
}

TEST_F(Events, MayDestroyTheGlobThatTheyReach)
{
    for (const EventCode when : {EventCode::MouseEnter, EventCode::MousePress, EventCode::MouseMove,
                                 EventCode::MouseRelease, EventCode::FocusIn, EventCode::FocusOut, EventCode::KeyPress,
                                 EventCode::MouseCancel, EventCode::MouseLeave}) {
        Scene other;
        Probe* first = other.add("first", {0, 0, 50, 50});
        Probe* second = other.add("second", {50, 0, 100, 50});
        first->takes = second->takes = true;
        first->setFocusable(true);
        second->setFocusable(true);
        const GlobRef<Probe> watched(first);
        first->onEvent = [=](const Event& event) {
            if (event.code == when)
                delete first;
        };
        other.canvas.inject(Event::mouseMove({10, 10}));
        other.press({10, 10});
        other.drag({12, 10});
        other.key(Key::Up);
        other.release({12, 10});
        other.press({12, 10});
        other.click({60, 10});
        other.canvas.inject(Event::mouseMove({61, 10}));
        EXPECT_FALSE(watched) << "the event " << std::hex << static_cast<unsigned>(when) << " never came";
        EXPECT_TRUE(second->hasFocus());
        EXPECT_EQ(second->count(EventCode::MouseRelease), 1) << "life goes on";
    }
}

TEST_F(Events, MayDestroyTheWholePanel)
{
    a->setFocusable(true);
    a->onEvent = [&](const Event& event) {
        if (event.code == EventCode::MousePress)
            scene.panel.reset();
    };
    scene.press({10, 10});
    EXPECT_EQ(scene.canvas.focusOwner(), nullptr);
    EXPECT_FALSE(inject(Event::mouseMove({10, 10}, MouseButton::Left)));
    EXPECT_FALSE(scene.key(Key::Tab));
}

TEST_F(Events, OfKeysGoToTheFocusOwnerThenUp)
{
    Probe* inner = addInside({0, 0, 20, 20});
    inner->setFocusable(true);
    ASSERT_TRUE(inner->takeFocus());
    EXPECT_EQ(scene.canvas.focusOwner(), inner);
    EXPECT_TRUE(inject(Event::character(L'a')));
    EXPECT_EQ(inner->last().text, L"a");
    EXPECT_EQ(told(), "in( ink ak ");
    inner->dropFocus();
    EXPECT_EQ(scene.canvas.focusOwner(), nullptr);
    EXPECT_FALSE(scene.key(Key::Up));

    b->setFocusable(true);
    scene.press({10, 40});
    ASSERT_TRUE(b->takeFocus());
    told();
    EXPECT_TRUE(scene.key(Key::Escape));
    EXPECT_EQ(told(), "ak ") << "during a drag Escape is for what is dragged";
    scene.release({10, 40});
    scene.key(Key::Escape);
    EXPECT_EQ(told(), "a- a> bk ");
}

TEST_F(Events, OfAPressMoveTheFocusFirst)
{
    a->setFocusable(true);
    b->setFocusable(true);
    scene.click({10, 10});
    inject(Event::mouseMove({60, 10}));
    told();
    scene.press({60, 10});
    EXPECT_EQ(told(), "a) b( b+ ") << "the old one is told before anything is done, so that it can commit";
    scene.release({60, 10});
    scene.press({150, 90});
    EXPECT_EQ(scene.canvas.focusOwner(), nullptr) << "a press beside everything takes the focus away";
}

TEST_F(Events, OfFocusComeOnlyToWhatCanBeUsed)
{
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
    a->setEnabled(false);
    EXPECT_FALSE(a->hasFocus());
    EXPECT_EQ(told(), "a( a) ");

    Probe* c = scene.add("c", {100, 0, 150, 50});
    c->setFocusable(true);
    b->setFocusable(true);
    a->setEnabled(true);
    a->takeFocus();
    a->onEvent = [c](const Event& event) {
        if (event.code == EventCode::FocusOut)
            c->takeFocus();
    };
    EXPECT_FALSE(b->takeFocus()) << "what loses the focus may move it";
    EXPECT_TRUE(c->hasFocus());
    EXPECT_EQ(b->count(EventCode::FocusIn), 0);
}

TEST_F(Events, ThatAreMessagesGoToTheSenderThenUpUntilTaken)
{
    Probe* inner = addInside({0, 0, 20, 20});
    EXPECT_TRUE(inner->sendMsg("hello"));
    EXPECT_EQ(inner->last().message, "hello");
    EXPECT_EQ(a->last().sender, inner);
    EXPECT_TRUE(a->sendMsg("up"));
    EXPECT_EQ(told(), "inm am am ") << "never down";
    inner->takes = true;
    EXPECT_TRUE(inner->sendMsg("taken"));
    EXPECT_EQ(told(), "inm ");
    inner->takes = a->takes = false;
    inner->onEvent = [inner](const Event&) { delete inner; };
    EXPECT_FALSE(inner->sendMsg("destroys the sender"));
    EXPECT_EQ(a->last().message, "destroys the sender");
    EXPECT_EQ(scene.panel->messages.back(), "destroys the sender");
}

} // namespace
} // namespace oribund::test
