#include "WidgetsSupport.h"
#include "tests/support/Listener.h"

#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/layout/WidgetGroup.h"
#include "oribund/host/toolkit/scroll/ScrollBar.h"
#include "oribund/host/toolkit/scroll/ScrollPanel.h"
#include "oribund/host/toolkit/widgets/Button.h"

#include <gtest/gtest.h>

namespace oribund::test
{
namespace
{

/** A bar of 100 pixels with a thumb of 20 and room for 80. */
class ScrollBars : public testing::Test
{
protected:
    ScrollBars()
        : bar(desk.add<ScrollBar>(ScrollBar::InitArgs(12, 100)))
    {
        bar->setThumb(0.0, 0.2);
    }

    Desk desk;
    ScrollBar* bar;
    std::string heard;
    Listener<ScrollBarEvent> told{bar->events(), [this](const ScrollBarEvent& event) {
                                      heard += std::to_string(static_cast<int>(event.kind)) + " ";
                                  }};
};

TEST_F(ScrollBars, ADragMovesTheThumbWithThePointerAndEscapePutsItBack)
{
    desk.press({5, 5});
    desk.drag({5, 45});
    EXPECT_DOUBLE_EQ(bar->getThumbPosition(), 0.4);
    EXPECT_EQ(bar->thumbBox(), (Kt::Box<int>{0, 40, 12, 60}));
    desk.drag({300, 900});
    EXPECT_DOUBLE_EQ(bar->getThumbPosition(), 0.8);
    desk.release({300, 900});
    EXPECT_EQ(heard, "0 0 3 ");
    desk.press({5, 90});
    desk.drag({5, 50});
    EXPECT_TRUE(desk.key(Key::Escape));
    EXPECT_DOUBLE_EQ(bar->getThumbPosition(), 0.8);
    EXPECT_EQ(heard, "0 0 3 0 0 3 ");
}

TEST_F(ScrollBars, PagesStepsAndEndsStayWithinTheBar)
{
    desk.click({5, 70});
    EXPECT_DOUBLE_EQ(bar->getThumbPosition(), 0.2);
    EXPECT_EQ(heard, "2 ");
    bar->setStep(0.05);
    EXPECT_TRUE(desk.key(Key::Down));
    EXPECT_TRUE(desk.canvas.inject(Event::mouseWheel({5, 5}, -1.0)));
    EXPECT_DOUBLE_EQ(bar->getThumbPosition(), 0.4);
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(desk.key(Key::PageDown));
    EXPECT_DOUBLE_EQ(bar->getThumbPosition(), 0.8);
    EXPECT_FALSE(desk.canvas.inject(Event::mouseWheel({5, 5}, -1.0))) << "for what is around it";
    EXPECT_TRUE(desk.key(Key::Home));
    EXPECT_EQ(heard, "2 0 0 2 2 0 ") << "what changes nothing is not told";
    EXPECT_TRUE(bar->accessibleSetNumber(0.3));
    EXPECT_DOUBLE_EQ(bar->accessible().number->value, 0.3);
    bar->setThumb(0.9, 2.0);
    EXPECT_DOUBLE_EQ(bar->getThumbPosition(), 0.0);
    EXPECT_TRUE(bar->thumbBox().empty()) << "all is in view";
}

/** Counts how often a button is drawn. */
class CountedButton : public Button
{
public:
    using Button::Button;

    void draw(CanvasRenderer& renderer) override
    {
        ++draws;
        Button::draw(renderer);
    }

    static inline int draws = 0;
};

/** 1000 buttons of 20 pixels in a panel of 100. */
class ScrollPanels : public testing::Test
{
protected:
    ScrollPanels()
        : canvas({200, 300})
        , panel(GlobCreationInfo(200, 100, &canvas))
    {
        panel.open();
        auto made = std::make_unique<WidgetGroup>(WidgetGroup::InitArgs());
        group = made.get();
        {
            const LayoutHold hold(*group);
            for (int i = 0; i < 1000; ++i) {
                buttons.push_back(
                    group->addWidget(std::make_unique<CountedButton>(Button::InitArgs(50, 20)),
                                     i == 0 ? Glob::UserTopLeft(0, 0) : WidgetPosition::below(*buttons.back(), 0)));
            }
        }
        panel.setContent(std::move(made));
    }

    void draw()
    {
        RecordingRenderer renderer(CanvasRenderer::toDouble(canvas.box()));
        CountedButton::draws = 0;
        canvas.draw(renderer);
    }

    int topOf(int button) const { return buttons[static_cast<std::size_t>(button)]->toCanvas({}).y; }

    Canvas canvas;
    ScrollPanel panel;
    WidgetGroup* group = nullptr;
    std::vector<Button*> buttons;
};

TEST_F(ScrollPanels, OnlyWhatIsInViewIsDrawnAndHit)
{
    EXPECT_EQ(group->getHeight(), 20000);
    EXPECT_EQ(group->getWidth(), 200 - UifStd::getScrollBarWidth());
    draw();
    EXPECT_EQ(CountedButton::draws, 5);
    EXPECT_TRUE(panel.setScroll(10010));
    EXPECT_EQ(canvas.dirtyRegion().bounds(), panel.box()) << "what is around it stays as it is";
    draw();
    EXPECT_EQ(CountedButton::draws, 6);
    EXPECT_EQ(panel.globAt({10, 95}), buttons[505]);
    EXPECT_EQ(panel.globAt({10, 105}), nullptr);
    buttons[3]->setText(L"Out of view");
    EXPECT_TRUE(canvas.dirtyRegion().empty());
    EXPECT_FALSE(buttons[3]->accessible().visible);
    EXPECT_TRUE(buttons[505]->accessible().visible);
}

TEST_F(ScrollPanels, WheelKeysAndBarScrollAsFarAsThereIsSomething)
{
    const int notch = 3 * UifStd::getRowHeight();
    EXPECT_FALSE(canvas.inject(Event::mouseWheel({10, 10}, 1.0)));
    EXPECT_TRUE(canvas.inject(Event::mouseWheel({10, 10}, -1.5)));
    EXPECT_EQ(panel.getScroll(), notch + notch / 2);
    EXPECT_TRUE(canvas.inject(Event::keyPress(Key::End)));
    EXPECT_EQ(panel.getScroll(), 19900);
    EXPECT_DOUBLE_EQ(panel.scrollBar().getThumbPosition(), 0.995);
    EXPECT_TRUE(canvas.inject(Event::keyPress(Key::PageUp)));
    EXPECT_EQ(panel.getScroll(), 19900 - 100 + UifStd::getRowHeight());
    EXPECT_FALSE(canvas.inject(Event::keyPress(Key::Home, Event::kCtrl))) << "a command of the window";
    canvas.inject(Event::mousePress({195, 50}));
    EXPECT_LT(panel.getScroll(), 19800) << "a page by the bar";
    canvas.inject(Event::mouseRelease({195, 50}));
    EXPECT_TRUE(canvas.inject(Event::keyPress(Key::Home)));
    EXPECT_EQ(panel.getScroll(), 0);
}

TEST_F(ScrollPanels, WhatGetsTheKeyboardComesIntoView)
{
    EXPECT_TRUE(buttons[500]->takeFocus());
    EXPECT_EQ(topOf(500), 80);
    canvas.inject(Event::keyPress(Key::Tab, Event::kShift));
    EXPECT_EQ(topOf(499), 60) << "in view already";
    buttons[10]->takeFocus();
    EXPECT_EQ(topOf(10), 0);
    group->reveal({0, 400, 10, 900});
    EXPECT_EQ(panel.getScroll(), 400) << "the upper end of what is too high";
    canvas.inject(Event::mousePress({10, 99}));
    EXPECT_EQ(panel.getScroll(), 400) << "nothing moves under the pointer";
}

TEST_F(ScrollPanels, ItFollowsItsContentAndItsOwnSize)
{
    panel.setScroll(15000);
    panel.resize({200, 300});
    EXPECT_EQ(panel.getScroll(), 15000);
    for (; buttons.size() > 10; buttons.pop_back())
        group->destroyWidget(*buttons.back());
    EXPECT_EQ(panel.getScroll(), 0);
    EXPECT_FALSE(panel.scrollBar().isVisible());
    EXPECT_EQ(group->getWidth(), 200);
    EXPECT_FALSE(canvas.inject(Event::keyPress(Key::PageDown))) << "nothing to scroll";
    panel.setContent(nullptr);
    draw();
    EXPECT_EQ(CountedButton::draws, 0);
}

} // namespace
} // namespace oribund::test
