#include "oribund/controls/bars/therm.h"
#include "oribund/cues/CueDescriptionPanel.h"
#include "oribund/host/edit/iScrubControl.h"
#include "tests/support/Desk.h"
#include "tests/support/FakeView.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <utility>
#include <vector>

namespace oribund::test
{
namespace
{

class ScrubbedVob : public FakeVob, public iScrubControl
{
public:
    iScrubControl* getScrubControl() override { return this; }

    void setPlayState(PlayState state) override { states.push_back(state); }

    unsigned getChangeFlags() const override { return changeFlags; }

    void setChangeFlags(unsigned flags) override { changeFlags = flags; }

    bool scrubsWithSound() const override { return sound; }

    std::vector<PlayState> states;
    unsigned changeFlags = 1;
    bool sound = false;
};

/** A bar of 200 pixels for the 100 seconds of an edit. */
class Therms : public testing::Test, protected Desk
{
protected:
    Therms() { panel->setBorder({}); }

    therm::InitArgs args(unsigned short height = 18) const
    {
        therm::InitArgs made(200, height);
        made.cookie = Cookie("edit");
        made.end = 100.0;
        made.vob = vob.get();
        return made;
    }

    therm* make(unsigned flags = 0, unsigned short height = 18)
    {
        therm::InitArgs made = args(height);
        made.flags = flags;
        return add<therm>(made);
    }

    void addCue(double time, int id = 1)
    {
        Cue cue;
        cue.id = {id, 0, 0};
        cue.time = time;
        cue.name = L"Door";
        vob->edit->cues.add(cue);
    }

    void press(int x) { Desk::press({x, 2}); }

    void drag(int x) { Desk::drag({x, 2}); }

    void release(int x) { Desk::release({x, 2}); }

    void click(int x) { Desk::click({x, 2}); }

    std::unique_ptr<ScrubbedVob> vob = std::make_unique<ScrubbedVob>();
};

TEST_F(Therms, AClickNearACueGoesToItAndADoubleClickStaysThere)
{
    addCue(40.0);
    therm* bar = make();
    click(86);
    EXPECT_EQ(vob->getCurrentTime(), 40.0);
    EXPECT_EQ(bar->shownCue().name, L"Door");
    pressAgain({84, 2});
    EXPECT_EQ(vob->getCurrentTime(), 40.0);
    click(100);
    EXPECT_EQ(vob->getCurrentTime(), 50.0);
    canvas.inject(Event::mouseMove({84, 2}));
    EXPECT_EQ(bar->tooltip().text(), L"00:00:40:00  Door");
    vob->setCurrentTime(0.51);
    EXPECT_EQ(bar->getTime(eExact), 0.51);
    EXPECT_DOUBLE_EQ(bar->getTime(eFrameAccurate), 0.52);
}

TEST_F(Therms, ALowBarJumpsToACueAndOpensAndDrawsNothingOfIt)
{
    addCue(40.0);
    therm* bar = make(0, 10);
    click(86);
    EXPECT_EQ(vob->getCurrentTime(), 40.0);
    EXPECT_TRUE(panel->messages.empty());
    const std::size_t low = drawn(*bar).primitives().size();
    bar->resize(200.0, 18.0);
    EXPECT_GT(drawn(*bar).primitives().size(), low);
}

/** A bar of a host that knows more of its edit, and may show cues itself. */
class RichTherm : public therm
{
public:
    using therm::therm;

    std::vector<Section> marked;
    bool ownPopup = true;
    Glob* popup = nullptr;
    std::vector<int> cuesDrawn;

protected:
    std::vector<Section> sections() const override { return marked; }

    std::unique_ptr<Glob> makePopup(const Cue& cue) override
    {
        std::unique_ptr<Glob> made = ownPopup ? therm::makePopup(cue) : nullptr;
        popup = made.get();
        return made;
    }

    void drawCueAt(CanvasRenderer&, int x, const Colour&) override { cuesDrawn.push_back(x); }
};

TEST_F(Therms, APopUpStandsBelowItsCueAsLongAsBothAreThere)
{
    auto* bar = panel->addWidget(std::make_unique<RichTherm>(args()), Glob::UserTopLeft(0, 0));
    const auto popUp = [&] {
        vob->edit->cues.remove({1, 0, 0});
        addCue(40.0);
        click(86);
        return GlobRef<Glob>(bar->popup);
    };
    const auto popup = popUp();
    ASSERT_TRUE(popup && popup->isShown());
    EXPECT_EQ(popup->getPosition(), (XY<int>{80, 18}));
    EXPECT_EQ(dynamic_cast<CueDescriptionPanel&>(*popup).getCue().name, L"Door");
    EXPECT_TRUE(panel->messages.empty());
    press(150);
    EXPECT_FALSE(popup);
    release(150);

    const auto ofRemoved = popUp();
    vob->edit->addModification({});
    EXPECT_TRUE(ofRemoved) << "something else was modified";
    vob->edit->cues.remove({1, 0, 0});
    vob->edit->addModification({});
    EXPECT_FALSE(ofRemoved);
    const auto ofHidden = popUp();
    panel->setVisible(false);
    EXPECT_FALSE(ofHidden);
    panel->setVisible(true);
    const auto ofClosed = popUp();
    panel->close();
    EXPECT_FALSE(ofClosed);
    panel->open();
    const auto given = popUp();
    ASSERT_TRUE(bar->takeFocus());
    EXPECT_TRUE(canvas.inject(Event::keyPress(Key::Escape)));
    EXPECT_FALSE(given);
    EXPECT_FALSE(canvas.inject(Event::keyPress(Key::Escape)));
    canvas.setSize({400, 100});
    bar->setPosition({0, 75});
    bar->jumpToPos(40.0);
    EXPECT_EQ(bar->popup->box().bottom, 75) << "above a bar that stands low, and no higher than the canvas";
    EXPECT_EQ(bar->popup->box().top, 0);
    EXPECT_TRUE(panel->messages.empty());
    canvas.setSize({400, 18});
    bar->setPosition({0, 0});
    bar->jumpToPos(40.0);
    ASSERT_EQ(panel->messages.size(), 1U);
    EXPECT_EQ(std::exchange(panel->messages, {}).back(), therm::showCueMsg) << "there is no room for it";
    bar->ownPopup = false;
    bar->jumpToPos(40.0);
    EXPECT_EQ(panel->messages.back(), therm::showCueMsg) << "the owner's business";

    for (int i = 0; i < 1000; ++i)
        addCue(70.0 + i * 1e-5, 10 + i);
    drawn(*bar);
    EXPECT_EQ(bar->cuesDrawn, (std::vector<int>{80, 140})) << "one for all at a pixel";
}

TEST_F(Therms, SectionsAreStripsThatALowBarLeavesOut)
{
    auto* bar = panel->addWidget(std::make_unique<RichTherm>(args()), Glob::UserTopLeft(0, 0));
    const auto boxes = [bar] {
        std::vector<Kt::Box<double>> all;
        const RecordingRenderer renderer = drawn(*bar);
        for (const Primitive& p : renderer.primitives())
            if (p.box.left == 20.0 && p.box.right == 60.0)
                all.push_back(p.box);
        return all;
    };
    using Kind = therm::Section::Kind;
    for (const Kind kind : {Kind::Marked, Kind::RangedCue, Kind::NotRealTime, Kind::QualityEvent})
        bar->marked.push_back({kind, {10.0, 30.0}, {}});
    EXPECT_EQ(boxes(),
              (std::vector<Kt::Box<double>>{{20, 6, 60, 12}, {20, 0, 60, 3}, {20, 16, 60, 18}, {20, 14, 60, 18}}));
    bar->resize(200.0, 10.0);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(Therms, WhatIsNoTimeIsNotSetAndEndlesslyFarIsTheEnd)
{
    therm* bar = make();
    vob->setCurrentTime(50.0);
    bar->jumpToPos(std::nan(""));
    bar->setTime(std::nan(""));
    EXPECT_FALSE(bar->accessibleSetNumber(std::nan("")));
    EXPECT_EQ(vob->getCurrentTime(), 50.0);
    vob->viewRange = {0.0, 20.0};
    bar->jumpToPos(HUGE_VAL);
    EXPECT_EQ(vob->viewRange, NumRange<double>(90.0, 110.0));
}

TEST_F(Therms, TheWheelZoomsAboutTheTimeWhereZoomingIsAllowed)
{
    therm* bar = make();
    vob->setCurrentTime(30.0);
    vob->viewRange = {20.0, 60.0};
    bar->set(0.0, 100.0, 20.0, 60.0);
    canvas.inject(Event::mouseWheel({5, 2}, 1.0));
    EXPECT_TRUE(panel->messages.empty());
    bar->setAllowZoom(true);
    EXPECT_TRUE(canvas.inject(Event::mouseWheel({5, 2}, 1.0)));
    EXPECT_EQ(bar->requestedWindow(), NumRange<double>(22.0, 54.0));
    EXPECT_EQ(panel->messages.back(), ThermBase::resizeZoomWinMsg + String(" 0.8"));
    canvas.inject(Event::mouseWheel({5, 2}, -1.0));
    EXPECT_EQ(bar->requestedWindow(), NumRange<double>(17.5, 67.5));
    panel->messages.clear();
    canvas.inject(Event::mouseWheel({5, 2}, 0.5));
    EXPECT_TRUE(panel->messages.empty()) << "half a notch";
    canvas.inject(Event::mouseWheel({5, 2}, 0.5));
    EXPECT_EQ(bar->requestedWindow(), NumRange<double>(22.0, 54.0));
    canvas.inject(Event::mouseWheel({5, 2}, 0.5));
    canvas.inject(Event::mouseWheel({5, 2}, -1.0));
    EXPECT_EQ(bar->requestedWindow(), NumRange<double>(17.5, 67.5)) << "the other way, half a notch is forgotten";

    vob->viewRange = {29.99, 30.035};
    bar->set(0.0, 100.0, 29.99, 30.035);
    panel->messages.clear();
    canvas.inject(Event::mouseWheel({5, 2}, 1.0));
    EXPECT_TRUE(panel->messages.empty()) << "no less than a frame";
    vob->viewRange = {30.0, 30.0};
    bar->set(0.0, 100.0, 30.0, 30.0);
    canvas.inject(Event::mouseWheel({5, 2}, -1.0));
    EXPECT_NEAR(bar->requestedWindow().length(), 0.04, 1e-9) << "out of a window without length";
    EXPECT_FALSE(panel->messages.empty());
}

TEST_F(Therms, ADragTellsTheViewerThatItScrubs)
{
    struct Case {
        unsigned flags;
        bool sound;
        PlayState state;
        unsigned changes;
    };

    for (const Case& c : {Case{0, false, PlayState::Scrub, 0x11}, Case{0x80, true, PlayState::Held, 0x91},
                          Case{0x88, false, PlayState::Idle, 0x11}}) {
        vob->sound = c.sound;
        vob->states.clear();
        therm* bar = make(c.flags);
        press(20);
        EXPECT_EQ(vob->states, std::vector<PlayState>{c.state});
        EXPECT_EQ(vob->changeFlags, c.changes);
        drag(30);
        release(30);
        EXPECT_EQ(vob->states, (std::vector<PlayState>{c.state, PlayState::Idle}));
        EXPECT_EQ(vob->changeFlags, 1U);
        panel->destroyWidget(*bar);
    }
}

TEST_F(Therms, ABarThatGoesOrShowsAnotherViewerInMidDragLeavesNoScrubBehind)
{
    therm* bar = make();
    ScrubbedVob other;
    for (const bool goes : {false, true}) {
        press(20);
        if (goes)
            panel->destroyWidget(*bar);
        else
            bar->setVob(&other);
        EXPECT_EQ(vob->states.back(), PlayState::Idle);
        EXPECT_EQ(vob->changeFlags, 1U);
        if (!goes)
            bar->setVob(vob.get());
    }
}

} // namespace
} // namespace oribund::test
