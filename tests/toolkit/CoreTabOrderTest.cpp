#include "CoreProbe.h"

#include "oribund/host/toolkit/core/EventRouter.h"
#include "oribund/host/toolkit/layout/TabOrderManager.h"

#include <gtest/gtest.h>

namespace oribund::test
{
namespace
{

/** Four focusable probes named a to d on a panel. */
class TabOrder : public testing::Test
{
protected:
    TabOrder()
    {
        for (int i = 0; i < 4; ++i) {
            const char name[] = {static_cast<char>('a' + i), '\0'};
            probes.push_back(scene.add(name, {i * 40, 0, i * 40 + 30, 30}));
            probes.back()->setFocusable(true);
        }
    }

    /** The names of what gets the focus in `steps` presses of Tab. */
    std::string tab(int steps, unsigned modifiers = 0)
    {
        std::string visited;
        for (int i = 0; i < steps; ++i) {
            if (!scene.canvas.inject(Event::keyPress(Key::Tab, modifiers)))
                visited += "!";
            else
                visited += scene.canvas.focusOwner()->idString().c_str();
        }
        return visited;
    }

    Scene scene;
    std::vector<Probe*> probes;
};

TEST_F(TabOrder, IsThatOfTheTreeUnlessOneIsSet)
{
    EXPECT_EQ(tab(5), "abcda");
    EXPECT_EQ(tab(5, Event::kShift), "dcbad");
}

TEST_F(TabOrder, FollowsTheManager)
{
    TabOrderManager order;
    order.addTabStop(probes[2]);
    order.addTabStop(probes[0], -2);
    order.addTabStop(probes[1], 0);
    EXPECT_EQ(tab(5), "bcadb") << "what is not in the order comes in its own place";
    order.addTabStop(probes[1]);
    EXPECT_EQ(order.tabStops().size(), 3u) << "moved, not doubled";
    probes[3]->takeFocus();
    EXPECT_EQ(tab(3), "cab");
}

TEST_F(TabOrder, LeavesOutWhatCannotBeUsed)
{
    probes[1]->setVisible(false);
    probes[2]->setEnabled(false);
    EXPECT_EQ(tab(3), "ada");
    probes[3]->takes = true;
    EXPECT_EQ(tab(3), "ddd") << "an editor of code types it";
    scene.panel->setActive(false);
    EXPECT_EQ(tab(1), "!");
    EXPECT_EQ(scene.canvas.focusOwner(), nullptr);
}

TEST_F(TabOrder, StopsAndOrdersMayGoInAnyOrder)
{
    auto order = std::make_unique<TabOrderManager>();
    order->addTabStop(probes[0]);
    order->addTabStop(probes[1]);
    delete probes[0];
    ASSERT_EQ(order->tabStops().size(), 1u);
    order->addTabStop(nullptr);
    EXPECT_EQ(order->tabStops().size(), 1u);
    order.reset();
    EXPECT_EQ(probes[1]->tabOrderManager(), nullptr);
    EXPECT_EQ(tab(2), "bc");

    TabOrderManager one;
    TabOrderManager two;
    one.addTabStop(probes[1]);
    two.addTabStop(probes[1]);
    EXPECT_TRUE(one.tabStops().empty()) << "a stop is in one order at most";
}

TEST_F(TabOrder, TakesTheStopsOfAHostTogether)
{
    TabOrderManager order;
    order.addTabStop(probes[3]);
    Scene other;
    Probe* x = other.add("x", {0, 0, 10, 10});
    Probe* y = other.add("y", {0, 0, 10, 10});
    order.addTabStopsFrom(other.panel.get(), 0);
    EXPECT_EQ(order.tabStops(), (std::vector<TabOrderable*>{x, y, probes[3]}));
    order.addTabStopsFrom(other.panel.get(), -2);
    EXPECT_EQ(order.tabStops(), (std::vector<TabOrderable*>{probes[3], x, y}));
}

TEST(LongPanels, AreFilledAndWalkedInTheTimeOfTheirLength)
{
    constexpr int kCount = 500;
    Scene scene;
    Probe* last = nullptr;
    {
        const LayoutHold outer(*scene.panel);
        const LayoutHold inner(*scene.panel);
        for (int i = 0; i < kCount; ++i) {
            last = scene.add("row", {0, 2 * i, 10, 2 * i + 2});
            last->setFocusable(true);
            scene.panel->addTabStop(last);
        }
        EXPECT_EQ(last->getPosition().y, 0) << "not laid out yet";
    }
    EXPECT_EQ(last->getPosition().y, 2 * (kCount - 1));
    Probe::asked = 0;
    EXPECT_TRUE(scene.key(Key::Tab, Event::kShift));
    EXPECT_TRUE(last->hasFocus());
    EXPECT_LE(Probe::asked, 4 * kCount);
    auto hold = std::make_unique<LayoutHold>(*scene.panel);
    scene.panel.reset();
    hold.reset();
}

} // namespace
} // namespace oribund::test
