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

TEST_F(Sliders, EachPressOfAKeyIsAChangeOnItsOwn)
{
    slider->takeFocus();
    desk.key(Key::Left);
    EXPECT_DOUBLE_EQ(adaptor->value, 19.0);
    desk.key(Key::PageUp);
    EXPECT_DOUBLE_EQ(adaptor->value, 29.0);
    desk.key(Key::End);
    EXPECT_EQ(adaptor->value, 100.0);
    desk.key(Key::Right); // there is nothing beyond
    desk.key(Key::Home);
    EXPECT_EQ(adaptor->value, 0.0);
    EXPECT_EQ(adaptor->kinds(), "....");
    EXPECT_TRUE(desk.canvas.inject(Event::mouseWheel({20, 10}, 0.5)));
    EXPECT_TRUE(desk.canvas.inject(Event::mouseWheel({20, 10}, 0.5)));
    EXPECT_EQ(adaptor->value, 1.0);

    slider->setEnabled(false);
    desk.click(at(70));
    desk.key(Key::Home);
    slider->userPress(5.0);
    slider->userSet(5.0);
    EXPECT_EQ(adaptor->kinds(), ".....");
    EXPECT_FALSE(slider->isDragging());
}

TEST_F(Sliders, TheHandleKeepsItsDistanceFromThePointer)
{
    const XY<int> hold{at(20).x + 3, 10};
    desk.click(hold);
    EXPECT_EQ(adaptor->kinds(), "") << "a click on it changes nothing";
    EXPECT_EQ(adaptor->seriesEnds, 0);
    desk.press(hold);
    desk.drag({hold.x + 20, 10});
    EXPECT_DOUBLE_EQ(adaptor->value, 30.0);
    desk.drag(hold);
    EXPECT_DOUBLE_EQ(adaptor->value, 20.0) << "back where it began is an edit too";
    desk.drag(hold, Event::kShift);
    desk.drag({hold.x + 20, 10}, Event::kShift);
    EXPECT_NEAR(adaptor->value, 21.0, 1e-9) << "with Shift a tenth as far";
    desk.release({hold.x + 20, 10});
    EXPECT_EQ(adaptor->kinds(), "SCC");
    EXPECT_EQ(adaptor->seriesEnds, 1);
}

TEST_F(Sliders, EscapeAsksTheAdaptorToRestoreOrElseForTheFirstValue)
{
    desk.press(at(50));
    desk.drag(at(60));
    EXPECT_TRUE(desk.key(Key::Escape));
    EXPECT_EQ(adaptor->value, 20.0);
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

TEST_F(Sliders, ItMayBeDestroyedByItsOwnEdit)
{
    const XY<int> later = at(70);
    desk.press(at(50));
    adaptor->onRequest = [&] { desk.panel->destroyWidget(*slider); };
    desk.drag(at(60));
    desk.drag(later);
    desk.release(later);
    EXPECT_EQ(adaptor->getNumWidgets(), 0u);
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
        desk.pressAgain(at(value));
    };
    adaptor->restoresTo = 20.0;
    slider->setResetValue(40.0);
    doubleClick(70);
    EXPECT_EQ(adaptor->takenBack, 1);
    EXPECT_EQ(adaptor->value, 40.0);
    doubleClick(40); // on the handle: neither click sets anything
    EXPECT_EQ(adaptor->takenBack, 1);
    EXPECT_EQ(adaptor->kinds(), "S.");
    adaptor->restoresTo = 40.0;
    doubleClick(70);
    EXPECT_EQ(adaptor->takenBack, 2);
    EXPECT_EQ(adaptor->kinds(), "S.S") << "what was there before is the reset value already";
    desk.click(at(70));
    desk.key(Key::Left);
    desk.pressAgain(at(70));
    EXPECT_EQ(adaptor->takenBack, 2) << "the click is not what was done last";
    EXPECT_EQ(adaptor->value, 40.0);
}

TEST(PlainSlider, TheFillRunsFromTheOriginToTheValue)
{
    Slider::InitArgs args;
    args.width = 204;
    args.min = -1.0;
    Slider slider(args);
    const auto isDrawn = [&](double value, double left, double right) {
        slider.setValue(value);
        const auto rects = Desk::drawn(slider).ofKind(Primitive::Kind::Rect);
        return std::ranges::any_of(rects,
                                   [&](const Primitive& p) { return p.box.left == left && p.box.right == right; });
    };
    EXPECT_TRUE(isDrawn(0.5, 102, 152));
    EXPECT_TRUE(isDrawn(-0.5, 52, 102));
    slider.setRange(2.0, 4.0);
    EXPECT_TRUE(isDrawn(3.0, 2, 102)) << "0 is outside: from the end nearest to it";
}

} // namespace
} // namespace oribund::test
