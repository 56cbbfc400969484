#include "tests/controls/TrackFixture.h"
#include "tests/support/KeyWalk.h"

#include "oribund/controls/bars/CompoundEffectTherm.h"
#include "oribund/controls/keyframes/KeyframeCommands.h"
#include "oribund/cues/CueDrawing.h"
#include "oribund/host/canvas/RecordingRenderer.h"
#include "oribund/host/canvas/UifStd.h"

#include <array>
#include <functional>

namespace oribund::test
{
namespace
{

constexpr MouseButton kLeft = MouseButton::Left;
constexpr MouseButton kRight = MouseButton::Right;

/** A bar of 250 pixels for the 250 frames of the effect, from frame 250 on; keyframes at pixels 50, 100 and 200. */
class FXTherms : public Track
{
protected:
    FXTherms()
        : amount(addParam(*effect, L"Amount", {12.0, 14.0, 18.0}))
    {
        CompoundEffectTherm::InitArgs args(250, 18);
        args.vob = vob.get();
        args.track = FakeMonitor::track();
        bar = panel->addWidget(std::make_unique<CompoundEffectTherm>(args), Glob::UserTopLeft(0, 0));
    }

    void press(int x, MouseButton button = kLeft, unsigned modifiers = 0)
    {
        canvas.inject(Event::mousePress({x, 9}, button, modifiers));
    }

    void drag(int x, MouseButton button = kRight) { canvas.inject(Event::mouseMove({x, 9}, button)); }

    void release(int x, MouseButton button = kLeft) { canvas.inject(Event::mouseRelease({x, 9}, button)); }

    void click(int x, MouseButton button = kLeft, unsigned modifiers = 0)
    {
        press(x, button, modifiers);
        release(x, button);
    }

    NumRange<double> span() const { return {bar->geometry().start, bar->geometry().end}; }

    NumRange<double> window() const { return {bar->geometry().windowStart, bar->geometry().windowEnd}; }

    Kt::Ptr<EffectValParam<double>> amount;
    CompoundEffectTherm* bar;
};

TEST_F(FXTherms, TheBarFollowsTheEffectsAndItsWindowTheSignificantRegion)
{
    EXPECT_EQ(span(), NumRange<double>(10.0, 20.0));
    EXPECT_EQ(window(), span()) << "nothing in particular is worked on";
    ValServer<NumRange<FXTime, Unordered>>& region = vob->monitor->getSignificantRegionServer();
    region.set({FXTime{0.75}, FXTime{0.25}});
    EXPECT_EQ(window(), NumRange<double>(12.5, 17.5));
    bar->setZoomed(true);
    EXPECT_EQ(span(), NumRange<double>(12.5, 17.5));
    bar->setZoomed(false);

    bar->set(5.0, 25.0, 5.0, 25.0);
    vob->monitor->tell(EffectChangeCode::ParamValueChanged, effect->id());
    EXPECT_EQ(span(), NumRange<double>(5.0, 25.0)) << "the owner's span stands";
    addEffect(8, 8.0, 16.0);
    vob->monitor->tell(EffectChangeCode::ParamSetChanged, IdStamp::wildcard());
    EXPECT_EQ(span(), NumRange<double>(8.0, 20.0));
    EXPECT_EQ(bar->getKeyframes().size(), 2U);

    vob->monitor->effects.clear();
    vob->setCurrentTime(30.0);
    EXPECT_EQ(span(), NumRange<double>(8.0, 20.0)) << "there is a way back";
    EXPECT_TRUE(bar->getKeyframes().empty());
}

TEST_F(FXTherms, DraggedEdgesOfTheWindowSetTheSignificantRegionAndTellTheOwner)
{
    bar->setAllowZoom(true);
    vob->setCurrentTime(15.0);
    press(249);
    drag(199, kLeft);
    release(199);
    const auto region = vob->monitor->getSignificantRegionServer().get();
    EXPECT_DOUBLE_EQ(region.start().normalised, 0.2);
    EXPECT_DOUBLE_EQ(region.end().normalised, 0.8);
    EXPECT_DOUBLE_EQ(window().end(), 18.0);
    EXPECT_FALSE(panel->messages.empty());
}

TEST_F(FXTherms, OtherEffectsInADragLeaveTheBarUnderThePointer)
{
    const auto other = addEffect(8, 40.0, 50.0);
    const auto theirs = addParam(*other, L"Amount", {44.0});
    std::swap(vob->monitor->effects[0], vob->monitor->effects[1]);
    const auto here = vob->monitor->effects;
    const auto playTo = [&](double time, std::size_t first) {
        vob->monitor->effects = {here[first]};
        vob->setCurrentTime(time);
    };
    playTo(10.04, 1);
    press(230);
    playTo(19.0, 0);
    drag(240, kLeft);
    EXPECT_EQ(span(), NumRange<double>(10.0, 20.0));
    EXPECT_DOUBLE_EQ(vob->getCurrentTime(), 19.6);
    release(240);
    EXPECT_EQ(span(), NumRange<double>(40.0, 50.0));

    playTo(10.0, 1);
    vob->monitor->selectKeyframe({other->id(), theirs->id(), 0.4}, true);
    press(100, kRight);
    vob->monitor->effects = here;
    playTo(45.0, 0);
    vob->monitor->effects = {here[0], here[1]};
    drag(110);
    EXPECT_EQ(span(), NumRange<double>(10.0, 20.0));
    EXPECT_EQ(frames(*amount), (std::vector<int>{300, 360, 450}));
    EXPECT_DOUBLE_EQ(theirs->graph()->timeAt(0), 0.4);
    playTo(45.0, 0);
    release(110, kRight);
    EXPECT_EQ(span(), NumRange<double>(40.0, 50.0));
}

TEST_F(FXTherms, TheLeftButtonSelectsAndOnlyBesideKeyframesSetsTheTime)
{
    addParam(*effect, L"Size", {12.0});
    click(56);
    EXPECT_EQ(selected(), 2) << "all at that time, from the farthest pixel that counts";
    EXPECT_EQ(vob->getCurrentTime(), 10.0);
    vob->playing = true;
    click(107);
    EXPECT_FALSE(vob->playing);
    EXPECT_DOUBLE_EQ(vob->getCurrentTime(), 14.28);
    click(44);
    EXPECT_EQ(selected(), 0);
    click(200, kLeft, Event::kCtrl);
    click(150, kLeft, Event::kCtrl);
    EXPECT_EQ(selected(), 0);
    EXPECT_DOUBLE_EQ(vob->getCurrentTime(), 14.28);
    canvas.inject(Event::mouseDoubleClick({198, 9}));
    release(198);
    EXPECT_EQ(vob->getCurrentTime(), 18.0);
}

TEST_F(FXTherms, TheRightButtonDragsALoneKeyframeAndLetsGoOfIt)
{
    press(103, kRight);
    EXPECT_EQ(bar->dragState(), 0x40U);
    EXPECT_EQ(selected(), 1);
    drag(110);
    drag(110);
    drag(120);
    EXPECT_EQ(frames(*amount), (std::vector<int>{300, 370, 450}));
    EXPECT_EQ(vob->monitor->backups, 2) << "one for each move";
    EXPECT_EQ(vob->monitor->lastModification.type, EffectModification::Type::KeyframesMoved);
    release(120, kLeft);
    EXPECT_EQ(bar->dragState(), 0x40U) << "not the button that holds it";
    release(120, kRight);
    EXPECT_EQ(bar->dragState(), 0U);
    EXPECT_EQ(vob->edit->finished, 1);
    EXPECT_FALSE(panel->isMenuOpen());

    press(0); // on the marker
    bar->setEnabled(false);
    bar->setEnabled(true);
    click(120, kRight);
    EXPECT_EQ(vob->getCurrentTime(), 10.0) << "the click that was taken away sets no time any more";
}

TEST_F(FXTherms, EveryPixelWithKeyframesHasOneMark)
{
    addParam(*effect, L"Size", {12.0, 20.0});
    click(100);
    RecordingRenderer renderer;
    bar->draw(renderer);
    std::vector<int> plain;
    std::vector<int> selectedOnes;
    // The middle row of a diamond's fill is its widest one.
    const double widest = 2.0 * UifStd::getWidgetGap() - 1.0;
    for (const Primitive& p : renderer.ofKind(Primitive::Kind::Rect)) {
        if (p.box.width() == widest && p.colour == Colour{0.4, 0.1, 0.4})
            plain.push_back(static_cast<int>(p.box.left + widest / 2));
        else if (p.box.width() == widest && p.colour == Colour{1.0, 1.0, 0.0})
            selectedOnes.push_back(static_cast<int>(p.box.left + widest / 2));
    }
    EXPECT_EQ(plain, (std::vector<int>{50, 200, 249 - UifStd::getWidgetGap()})) << "whole, at the end of the bar too";
    EXPECT_EQ(selectedOnes, (std::vector<int>{100}));
    EXPECT_EQ(renderer.depth(), 0U);
}

TEST_F(FXTherms, ItTellsWhatIsAtTheTimeAndAtThePointer)
{
    EXPECT_EQ(bar->valueText(), L"00:00:10:00");
    vob->setCurrentTime(25.0);
    EXPECT_EQ(bar->valueText(), L"00:00:25:00");
    vob->setCurrentTime(14.0);
    EXPECT_EQ(bar->valueText(), L"Amount, 00:00:14:00, 25 %, keyframe 2 of 3");
    click(198);
    EXPECT_EQ(bar->tooltip(), UIString(L"Amount, 00:00:18:00, 25 %, keyframe 3 of 3, selected"));
    for (const wchar_t* const name : {L"A", L"B", L"C", L"D"})
        addParam(*effect, name, {14.0});
    const WString text = bar->valueText();
    EXPECT_TRUE(text.view().ends_with(L"\nand 1 more")) << toUTF8(text).c_str();
    canvas.inject(Event::mouseMove({150, 9}));
    EXPECT_TRUE(bar->tooltip().empty());
}

TEST_F(FXTherms, AMovedTimeRepaintsTheMarkerAlone)
{
    RecordingRenderer renderer;
    vob->setCurrentTime(12.0);
    canvas.draw(renderer);
    vob->setCurrentTime(18.0);
    const std::vector<Kt::Box<int>>& boxes = canvas.dirtyRegion().boxes();
    ASSERT_EQ(boxes.size(), 2U) << "where it was and where it is";
    EXPECT_TRUE(boxes[0].contains(XY<int>{50, 9}) && boxes[1].contains(XY<int>{200, 9}));
    EXPECT_LT(boxes[0].width() + boxes[1].width(), 60);
    canvas.draw(renderer);
    addEffect(8, 8.0, 16.0);
    vob->setCurrentTime(15.0);
    EXPECT_EQ(canvas.dirtyRegion().bounds().width(), bar->getWidth()) << "other effects are shown";
}

TEST_F(FXTherms, EscapeLeavesNothingSelectedThatWasNotBefore)
{
    const auto other = addParam(*effect, L"Other", {11.0, 14.0});
    press(100, kRight);
    EXPECT_EQ(selected(), 2);
    other->graph()->removeKeyframe(1);
    key(Key::Escape);
    EXPECT_EQ(selected(), 0) << "one has gone";
    release(100, kRight);

    press(100, kRight);
    vob->monitor->effects.front().second = {10.0, 18.0};
    amount->graph()->setKeyframeTimes(std::array{0, 1, 2}, std::array{0.25, 0.5, 1.0}, ChangeKind::Single);
    vob->monitor->tell(EffectChangeCode::ParamSetRestored, effect->id());
    EXPECT_EQ(selected(), 1);
    key(Key::Escape);
    EXPECT_EQ(selected(), 0) << "it has another effect time";
    EXPECT_EQ(bar->accessible(-7).role, bar->accessible(99).role) << "no part of it";
}

TEST_F(FXTherms, KeyframesArePartsOfItForThoseWhoDoNotSeeIt)
{
    ASSERT_EQ(bar->accessiblePartCount(), 3);
    EXPECT_EQ(bar->accessiblePartAt({198, 9}), 2);
    EXPECT_EQ(bar->accessiblePartAt({150, 9}), Glob::kNoPart);
    EXPECT_TRUE(bar->accessibleActivate(2));
    const AccessibleDescription third = bar->accessible(2);
    EXPECT_EQ(third.name, UIString(L"Amount, 00:00:18:00, 25 %, keyframe 3 of 3, selected"));
    EXPECT_TRUE(third.selected);
    EXPECT_FALSE(bar->accessible(1).selected);
    EXPECT_TRUE(third.box.contains(XY<int>{200, 9}));
    EXPECT_EQ(selected(), 1);
    addParam(*effect, L"Other", {14.0, 16.0});
    EXPECT_EQ(bar->accessiblePartCount(), 4) << "those at one time are one";
    EXPECT_FALSE(bar->accessibleActivate(4));
}

/** A bar with the keyboard. */
class BarStage : public KeyStage, public FXTherms
{
public:
    explicit BarStage(double time)
    {
        vob->setCurrentTime(time);
        bar->takeFocus();
    }

    Canvas& canvas() override { return Track::canvas; }

    void TestBody() override {}

    void withSelection() { bar->selectAllKeyframes(true); }

    void inDrag() { press(100, kRight), drag(110); }

    void locked() { bar->setEnabled(false); }
};

TEST(FXThermKeys, AreTakenExactlyWhenTheBarSaysThatItUsesThem)
{
    const auto used = [](double time, void (BarStage::*prepare)()) {
        return walkKeys([&] {
            auto stage = std::make_unique<BarStage>(time);
            if (prepare)
                (stage.get()->*prepare)();
            return stage;
        });
    };
    const int beside = used(13.0, nullptr);
    EXPECT_EQ(used(14.0, nullptr), beside + 2) << "Space, with Shift too";
    EXPECT_EQ(used(13.0, &BarStage::withSelection), beside + 1) << "Escape";
    EXPECT_EQ(used(13.0, &BarStage::inDrag), 2 + 5 + 5) << "Tab, the menu key, Escape";
    EXPECT_EQ(used(13.0, &BarStage::locked), 0);
}

/** Something happens during a drag of keyframes. */
class MishapsInADrag : public FXTherms, public testing::WithParamInterface<int>
{
protected:
    void happen(int which)
    {
        const std::function<void()> mishaps[] = {
            [&] {
                amount->graph()->removeAllKeyframes();
                vob->monitor->tell(EffectChangeCode::KeyframesChanged, effect->id());
            },
            [&] { bar->set(5.0, 5.0, 5.0, 5.0); },
            [&] { bar->setTrackID({}); },
            [&] { bar->setEnabled(false); },
            [&] { panel->close(); },
            [&] { vob->monitor.reset(); },
            [&] { vob.reset(); },
            [&] { panel->destroyWidget(*bar); },
        };
        mishaps[which]();
    }
};

TEST_P(MishapsInADrag, EndInNothingWorse)
{
    press(100, kRight);
    drag(110);
    happen(GetParam());
    drag(130);
    drag(140);
    RecordingRenderer renderer;
    canvas.draw(renderer);
    key(Key::Escape);
    release(140, kRight);
    press(100, kRight);
    drag(110);
    release(110, kRight);
    click(30);
    EXPECT_EQ(renderer.depth(), 0U);
}

INSTANTIATE_TEST_SUITE_P(, MishapsInADrag, testing::Range(0, 8));

} // namespace
} // namespace oribund::test
