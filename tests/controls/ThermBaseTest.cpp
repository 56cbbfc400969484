#include "oribund/controls/bars/ThermBase.h"
#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/canvas/ColourScheme.h"
#include "oribund/host/canvas/RecordingRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/layout/StandardPanel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace oribund
{
namespace
{

/** A bar over a number, which writes down where its series begin and end. */
class NumberBar : public ThermBase
{
public:
    using ThermBase::ThermBase;

    double getTime(eAccuracy) const override { return time; }

    void setTime(double newTime) override
    {
        time = newTime;
        log += '.';
        if (onSet)
            onSet();
    }

    void startTimeChangeSeries() override
    {
        log += '<';
        EXPECT_EQ(dragState() & 8U, 8U) << "it is known what is dragged";
    }

    void stopTimeChangeSeries() override { log += '>'; }

    double time = 50.0;
    std::string log;
    std::function<void()> onSet;
};

/** A panel that answers requests for a window. */
class OwnerPanel : public StandardPanel
{
public:
    using StandardPanel::StandardPanel;

    bool handleMessageEvent(const String& message, Glob* sender) override
    {
        messages.push_back(message);
        if (auto* bar = dynamic_cast<ThermBase*>(sender); bar && follows)
            bar->set(0.0, 100.0, bar->requestedWindow().start(), bar->requestedWindow().end());
        return true;
    }

    std::vector<String> messages;
    bool follows = true;
};

/** A bar of 100 pixels for 100 seconds, with the window from 20 to 80 and the time at 50. */
class ThermBars : public testing::Test
{
protected:
    ThermBars()
        : canvas({400, 100})
        , panel(std::make_unique<OwnerPanel>(GlobCreationInfo(400, 100, &canvas)))
        , bar(panel->addWidget(std::make_unique<NumberBar>(GlobCreationInfo(100, 18)), Glob::UserTopLeft(0, 0)))
    {
        panel->setBorder({});
        bar->setAllowZoom(true);
        bar->set(0.0, 100.0, 20.0, 80.0);
        panel->open();
    }

    void press(int x) { canvas.inject(Event::mousePress({x, 5})); }

    void drag(int x) { canvas.inject(Event::mouseMove({x, 5}, MouseButton::Left)); }

    void release(int x) { canvas.inject(Event::mouseRelease({x, 5})); }

    bool key(Key key) { return canvas.inject(Event::keyPress(key)); }

    NumRange<double> window() const { return {bar->geometry().windowStart, bar->geometry().windowEnd}; }

    Canvas canvas;
    std::unique_ptr<OwnerPanel> panel;
    NumberBar* bar;
};

TEST_F(ThermBars, AClickOnTheMarkerOrInTheWindowSetsTheTimeAndADoubleClickDrags)
{
    for (const int x : {53, 35}) {
        bar->log.clear();
        press(x);
        drag(x);
        release(x);
        EXPECT_EQ(bar->time, x);
        EXPECT_EQ(bar->log, "<.>");
        bar->time = 50.0;
    }
    press(35);
    drag(45);
    drag(35);
    release(35);
    EXPECT_EQ(bar->time, 50.0) << "there and back is no click";

    canvas.inject(Event::mouseDoubleClick({5, 5}));
    EXPECT_EQ(bar->dragState(), 8U);
    drag(10);
    EXPECT_EQ(bar->time, 10.0);
    release(10);
}

TEST_F(ThermBars, WhatIsSetAgainIsNotDrawnAgain)
{
    const auto draws = [&](const std::function<void()>& change) {
        const unsigned before = bar->repaintCount();
        change();
        return bar->repaintCount() != before;
    };
    bar->setMarkedRegion(NumRange<double>(1.0, 2.0));
    EXPECT_FALSE(draws([&] { bar->set(0.0, 100.0, 20.0, 80.0); }));
    EXPECT_FALSE(draws([&] { bar->setMarkedRegion(NumRange<double>(1.0, 2.0)); }));
    EXPECT_FALSE(draws([&] { bar->setViewRegionVisible(true); }));
    EXPECT_FALSE(draws([&] { bar->setAllowZoom(true); }));
    EXPECT_TRUE(draws([&] { bar->setAllowZoom(false); })) << "the window has another border";
}

TEST_F(ThermBars, AnEdgeZoomsAboutTheTimeAndTheOwnerIsToldByHowMuch)
{
    panel->follows = false;
    press(82);
    EXPECT_EQ(bar->dragState(), 5U);
    drag(72); // the edge keeps its two pixels from the pointer
    EXPECT_EQ(bar->requestedWindow(), NumRange<double>(30.0, 70.0));
    EXPECT_EQ(panel->messages.back(), ThermBase::resizeZoomWinMsg + String(" 0.6666666666666666"));
    EXPECT_EQ(window(), NumRange<double>(20.0, 80.0)) << "only the owner moves it";
    release(72);
    EXPECT_EQ(bar->log, "") << "the time is still in the window";
}

TEST_F(ThermBars, AGrabbedWindowMovesWithTheTime)
{
    press(35);
    EXPECT_EQ(bar->dragState(), 0x28U);
    drag(25);
    EXPECT_EQ(bar->time, 40.0);
    EXPECT_EQ(bar->requestedWindow(), NumRange<double>(10.0, 70.0)) << "it follows the pointer from where it was";
    drag(5);
    EXPECT_EQ(window(), NumRange<double>(0.0, 60.0)) << "whole, at the end of the span";
    drag(35);
    EXPECT_EQ(window(), NumRange<double>(20.0, 80.0));
    EXPECT_EQ(bar->time, 50.0);
    drag(99);
    EXPECT_EQ(window(), NumRange<double>(40.0, 100.0));
    key(Key::Escape);
    EXPECT_EQ(bar->time, 50.0);
    EXPECT_EQ(window(), NumRange<double>(20.0, 80.0));
    release(25);
}

TEST_F(ThermBars, KeysMoveTheTimeWithinTheSpan)
{
    ASSERT_TRUE(bar->takeFocus());
    EXPECT_TRUE(key(Key::Right));
    EXPECT_EQ(bar->time, 51.0);
    key(Key::Home);
    key(Key::Left);
    EXPECT_EQ(bar->time, 0.0);
    key(Key::End);
    EXPECT_EQ(bar->time, 100.0);
    EXPECT_FALSE(bar->accessibleName().empty());
}

TEST_F(ThermBars, WhatIsIgnoredTakesNoPressAndWhatIsDisabledEndsTheDrag)
{
    bar->setIgnoreMouseClicks(true);
    press(5);
    release(5);
    EXPECT_EQ(bar->log, "");
    bar->setIgnoreMouseClicks(false);
    press(5);
    bar->setEnabled(false);
    drag(60);
    release(60);
    EXPECT_EQ(bar->time, 5.0) << "disabled in mid-drag: what was set stands";
    EXPECT_EQ(bar->log, "<.>");
    EXPECT_EQ(bar->dragState(), 0U);
}

TEST_F(ThermBars, TheBarMayGoWithAnyChangeThatItMakes)
{
    for (const int changesBefore : {0, 1, 2}) {
        bar->setAllowZoom(true);
        bar->set(0.0, 100.0, 20.0, 80.0);
        int left = changesBefore;
        const auto destroy = [&] {
            if (left-- == 0)
                panel->destroyWidget(*bar);
        };
        bar->onSet = [destroy] { destroy(); };
        press(35);
        drag(30);
        drag(40);
        key(Key::Escape);
        release(40);
        EXPECT_LT(left, 0);
        EXPECT_EQ(panel->previousWidget(), nullptr);
        bar = panel->addWidget(std::make_unique<NumberBar>(GlobCreationInfo(100, 18)), Glob::UserTopLeft(0, 0));
    }
}

TEST_F(ThermBars, ATimeBeyondTheSpanIsAnArrowAtThatEnd)
{
    const Colour colour = UifStd::getColourScheme().currentTime;
    const auto drawn = [&](double time) {
        bar->time = time;
        RecordingRenderer renderer;
        bar->draw(renderer);
        const auto& all = renderer.primitives();
        const auto found = std::find_if(all.begin(), all.end(), [&](const auto& p) { return p.colour == colour; });
        EXPECT_NE(found, all.end());
        return found == all.end() ? Primitive() : *found;
    };
    EXPECT_EQ(drawn(30.0).box, (Kt::Box<double>{30, 0, 31, 18}));
    EXPECT_EQ(drawn(100.0).box, (Kt::Box<double>{99, 0, 100, 18}));
    EXPECT_EQ(drawn(101.0).points.front(), (XY<double>{100, 9}));
    EXPECT_EQ(drawn(-1.0).points.front(), (XY<double>{0, 9}));
}

} // namespace
} // namespace oribund
