#include "WidgetsSupport.h"

#include "oribund/host/toolkit/widgets/ValSlider.h"

#include <gtest/gtest.h>

#include <limits>

namespace oribund::test
{
namespace
{

/** A slider from 0 to 100 whose track is 200 pixels long: two pixels are one. */
class Sliders : public testing::Test
{
protected:
    Sliders()
    {
        Slider::InitArgs args;
        args.width = 204;
        args.max = 100.0;
        args.step = 1.0;
        args.page = 10.0;
        slider = desk.add<ValSlider>(args);
        slider->setDataAdaptor(adaptor);
    }

    XY<int> at(double value) const { return {static_cast<int>(slider->xOf(value)), 10}; }

    Kt::Ptr<StoreAdaptor<double>> adaptor = Kt::makePtr<StoreAdaptor<double>>(20.0);
    Desk desk;
    ValSlider* slider = nullptr;
};

TEST_F(Sliders, ADragIsOneSeriesAndEachPressOfAKeyAChangeOnItsOwn)
{
    desk.press(at(50));
    EXPECT_NEAR(adaptor->value, 50.0, 0.5);
    desk.drag(at(60));
    desk.drag(at(70));
    EXPECT_EQ(adaptor->seriesEnds, 0);
    desk.release(at(70));
    EXPECT_EQ(adaptor->kinds(), "SCC");
    EXPECT_NEAR(adaptor->value, 70.0, 0.5);
    EXPECT_EQ(adaptor->seriesEnds, 1);

    const double value = adaptor->value;
    desk.key(Key::Left);
    EXPECT_DOUBLE_EQ(adaptor->value, value - 1.0);
    desk.key(Key::PageUp);
    EXPECT_DOUBLE_EQ(adaptor->value, value + 9.0);
    desk.key(Key::End);
    EXPECT_EQ(adaptor->value, 100.0);
    desk.key(Key::Right); // there is nothing beyond
    desk.key(Key::Home);
    EXPECT_EQ(adaptor->value, 0.0);
    EXPECT_EQ(adaptor->kinds(), "SCC....");
    EXPECT_FALSE(desk.key(Key::Left, Event::kCtrl)) << "that is a command's";
}

TEST_F(Sliders, AClickOnTheHandleChangesNothing)
{
    desk.click({at(20).x + 3, 10});
    EXPECT_EQ(adaptor->kinds(), "");
    EXPECT_EQ(adaptor->seriesEnds, 0);

    // Taken off its middle, the handle keeps its distance from the pointer.
    desk.press({at(20).x + 3, 10});
    desk.drag({at(20).x + 23, 10});
    EXPECT_DOUBLE_EQ(adaptor->value, 30.0);
    desk.drag({at(20).x + 3, 10});
    EXPECT_DOUBLE_EQ(adaptor->value, 20.0) << "back where it began is an edit too";
    desk.release({at(20).x + 3, 10});
    EXPECT_EQ(adaptor->kinds(), "SC");
}

TEST_F(Sliders, WithShiftADragMovesATenthAsFar)
{
    desk.press(at(20));
    desk.drag(at(40));
    const double coarse = adaptor->value;
    desk.drag(at(40), Event::kShift);
    desk.drag(at(60), Event::kShift);
    EXPECT_NEAR(adaptor->value, coarse + 2.0, 1e-9);
    desk.release(at(60));
}

TEST_F(Sliders, EscapeAsksTheAdaptorToRestoreOrElseForTheFirstValue)
{
    desk.press(at(50));
    desk.drag(at(60));
    EXPECT_TRUE(desk.key(Key::Escape));
    EXPECT_EQ(adaptor->kinds(), "SCC");
    EXPECT_EQ(adaptor->value, 20.0);
    EXPECT_EQ(slider->getValue(), 20.0);
    desk.drag(at(90)); // the button is still down
    desk.release(at(90));
    EXPECT_EQ(adaptor->kinds(), "SCC");
    EXPECT_EQ(adaptor->seriesEnds, 1);

    adaptor->restoresTo = 33.0;
    desk.press(at(50));
    desk.key(Key::Escape);
    EXPECT_EQ(adaptor->kinds(), "SCCS") << "what the adaptor has restored is not asked for again";
    EXPECT_EQ(slider->getValue(), 33.0);

    EXPECT_FALSE(desk.key(Key::Escape)) << "without a drag it is not for the slider";
    EXPECT_EQ(adaptor->cancels, 2);
}

TEST_F(Sliders, ItStaysUnderThePointerAndIsBroughtInStepAtRelease)
{
    adaptor->convert = [](const double& v) { return std::min(v, 55.0); };
    desk.press(at(50));
    desk.drag(at(80));
    EXPECT_NEAR(slider->getValue(), 80.0, 0.5);
    EXPECT_EQ(adaptor->value, 55.0);
    adaptor->value = 12.0;
    adaptor->forceWidgetUpdate(eRedrawFlag::Yes);
    EXPECT_NEAR(slider->getValue(), 80.0, 0.5);
    desk.release(at(80));
    EXPECT_EQ(slider->getValue(), 12.0);
}

TEST_F(Sliders, ARefusedEditShowsTheOldValue)
{
    adaptor->refuses = true;
    slider->userStep(1);
    EXPECT_EQ(slider->getValue(), 20.0);

    desk.press(at(50));
    EXPECT_EQ(slider->getValue(), 20.0);
    adaptor->refuses = false;
    desk.drag(at(60));
    desk.drag(at(61));
    EXPECT_EQ(adaptor->kinds(), ".SSC") << "a series starts with the first edit that is accepted";
    desk.release(at(61));
}

TEST_F(Sliders, DisabledItDoesNothingAndAWheelNeedsTheKeyboardFocus)
{
    const auto wheel = [&](double notches) { return desk.canvas.inject(Event::mouseWheel({20, 10}, notches)); };
    EXPECT_FALSE(wheel(1.0));
    slider->takeFocus();
    EXPECT_TRUE(wheel(0.5));
    EXPECT_EQ(adaptor->kinds(), "");
    EXPECT_TRUE(wheel(0.5));
    EXPECT_EQ(adaptor->value, 21.0);

    slider->setEnabled(false);
    wheel(1.0);
    desk.click(at(70));
    desk.key(Key::Home);
    slider->userPress(5.0);
    slider->userSet(5.0);
    EXPECT_EQ(adaptor->kinds(), ".");
    EXPECT_FALSE(slider->isDragging());
}

TEST_F(Sliders, ItMayBeDestroyedByItsOwnEdit)
{
    const XY<int> later = at(70);
    desk.press(at(50));
    adaptor->onRequest = [&] { desk.panel->destroyWidget(*slider); };
    desk.drag(at(60));
    EXPECT_EQ(adaptor->getNumWidgets(), 0u);
    desk.drag(later);
    desk.release(later);
    EXPECT_EQ(adaptor->kinds(), "SC");
    EXPECT_TRUE(Drawable::redrawsEnabled());
}

TEST_F(Sliders, ValuesOutsideTheRangeAreShownAtItsEndAndLeftAlone)
{
    adaptor->value = 250.0;
    adaptor->forceWidgetUpdate(eRedrawFlag::Yes);
    EXPECT_EQ(slider->getValue(), 250.0);
    EXPECT_EQ(slider->xOf(250.0), slider->xOf(100.0));
    desk.press(at(100));
    desk.drag(at(100));
    EXPECT_EQ(adaptor->value, 250.0) << "taking hold is not an edit";
    desk.release(at(100));
    slider->userStep(-1);
    EXPECT_EQ(adaptor->value, 99.0);

    slider->setRange(5.0, 5.0);
    slider->setRange(9.0, 1.0);
    slider->setRange(0.0, std::numeric_limits<double>::infinity());
    slider->setValue(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(slider->getMax(), 100.0);
    EXPECT_EQ(slider->getValue(), 99.0);
}

TEST_F(Sliders, ADoubleClickResetsInsteadOfWhatItsFirstClickHasSet)
{
    const auto doubleClick = [&](double value) {
        desk.click(at(value));
        desk.canvas.inject(Event::mouseDoubleClick(at(value)));
        desk.release(at(value));
    };
    adaptor->restoresTo = 20.0;
    slider->setResetValue(40.0);
    doubleClick(70);
    EXPECT_EQ(adaptor->takenBack, 1);
    EXPECT_EQ(adaptor->value, 40.0);
    EXPECT_EQ(adaptor->kinds(), "S.");
    EXPECT_EQ(adaptor->seriesEnds, 1);

    doubleClick(40); // on the handle: neither click sets anything
    EXPECT_EQ(adaptor->takenBack, 1);
    EXPECT_EQ(adaptor->kinds(), "S.");

    adaptor->restoresTo = 40.0;
    doubleClick(70);
    EXPECT_EQ(adaptor->takenBack, 2);
    EXPECT_EQ(adaptor->kinds(), "S.S") << "what was there before is the reset value already";

    desk.click(at(70));
    desk.key(Key::Left);
    desk.canvas.inject(Event::mouseDoubleClick(at(70)));
    EXPECT_EQ(adaptor->takenBack, 2) << "the click is not what was done last";
    EXPECT_EQ(adaptor->value, 40.0);
}

TEST(PlainSlider, DoubleClickResetsAndWholeStepsAreKept)
{
    Desk desk;
    Slider::InitArgs args;
    args.width = 104;
    args.max = 10.0;
    args.value = 4.0;
    args.step = 2.0;
    args.resetValue = 6.0;
    args.snapToStep = true;
    auto* slider = desk.add<Slider>(args);
    slider->userPress(7.1);
    EXPECT_EQ(slider->getValue(), 8.0);
    slider->userRelease();
    desk.canvas.inject(Event::mouseDoubleClick({20, 10}));
    EXPECT_EQ(slider->getValue(), 6.0);
    EXPECT_FALSE(slider->isDragging());
}

TEST(PlainSlider, TheFillRunsFromTheOriginToTheValue)
{
    Desk desk;
    Slider::InitArgs args;
    args.width = 204;
    args.min = -1.0;
    args.value = 0.5;
    auto* slider = desk.add<Slider>(args);
    const auto isDrawn = [&](double left, double right) {
        const auto rects = Desk::drawn(*slider).ofKind(Primitive::Kind::Rect);
        return std::any_of(rects.begin(), rects.end(),
                           [&](const Primitive& p) { return p.box.left == left && p.box.right == right; });
    };
    EXPECT_TRUE(isDrawn(102, 152));
    slider->setValue(-0.5);
    EXPECT_TRUE(isDrawn(52, 102));
    slider->setOrigin(-1.0);
    EXPECT_TRUE(isDrawn(2, 52));
    slider->setRange(2.0, 4.0);
    slider->setOrigin({});
    slider->setValue(3.0);
    EXPECT_TRUE(isDrawn(2, 102)) << "0 is outside: from the end nearest to it";
}

} // namespace
} // namespace oribund::test
