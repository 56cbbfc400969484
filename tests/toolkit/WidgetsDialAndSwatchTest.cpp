#include "WidgetsSupport.h"

#include "oribund/host/toolkit/entries/TextBox.h"
#include "oribund/host/toolkit/menus/DropDownMenuButton.h"
#include "oribund/host/toolkit/widgets/AngleIndicatorWidget.h"
#include "oribund/host/toolkit/widgets/Button.h"
#include "oribund/host/toolkit/widgets/Checkbox.h"
#include "oribund/host/toolkit/widgets/Slider.h"
#include "oribund/host/toolkit/widgets/ValColourSwatch.h"

#include <gtest/gtest.h>

#include <cmath>

namespace oribund::test
{
namespace
{

class Dial : public AngleIndicatorWidget
{
public:
    using AngleIndicatorWidget::AngleIndicatorWidget;

    double angle() const { return getStoredValue(); }

    std::string kinds;
    int ends = 0;
    bool refuses = false;

protected:
    bool setIndicatorValue(double, ChangeKind kind) override
    {
        kinds += kind == ChangeKind::Start ? 'S' : kind == ChangeKind::Single ? '.' : 'C';
        return !refuses;
    }

    void handleSeriesEnd() override { ++ends; }
};

/** A dial with its middle at (50, 50). */
class Dials : public testing::Test
{
protected:
    Dials()
    {
        Dial::InitArgs args;
        args.width = args.height = 100;
        dial = desk.add<Dial>(args);
    }

    static XY<int> towards(double degrees)
    {
        const double radians = degrees * std::acos(-1.0) / 180.0;
        return {static_cast<int>(std::lround(49.5 + 40 * std::sin(radians))),
                static_cast<int>(std::lround(49.5 - 40 * std::cos(radians)))};
    }

    Desk desk;
    Dial* dial = nullptr;
};

TEST_F(Dials, TurningGoesOnPastWholeTurnsAndIsOneSeries)
{
    desk.press(towards(30));
    EXPECT_NEAR(dial->angle(), 30.0, 1.0);
    for (int turn = 45; turn <= 2 * 360 + 90; turn += 45)
        desk.drag(towards(turn));
    EXPECT_NEAR(dial->angle(), 810.0, 1.0);
    for (int turn = 720; turn >= -90; turn -= 45)
        desk.drag(towards(turn));
    EXPECT_NEAR(dial->angle(), -90.0, 1.0);
    desk.release(towards(-90));
    EXPECT_EQ(dial->kinds.front(), 'S');
    EXPECT_EQ(dial->kinds.find_first_not_of('C', 1), std::string::npos);
    EXPECT_EQ(dial->ends, 1);

    // Taken up again it goes the short way from where it stands.
    dial->setAngle(725.0);
    desk.press(towards(350));
    EXPECT_NEAR(dial->angle(), 710.0, 1.0);
    desk.release(towards(350));
}

TEST_F(Dials, KeysTurnItByOneOrTenDegreesAndShiftSnapsADrag)
{
    dial->takeFocus();
    desk.key(Key::Right);
    desk.key(Key::Up, Event::kShift);
    desk.key(Key::Left);
    EXPECT_DOUBLE_EQ(dial->angle(), 10.0);
    EXPECT_EQ(dial->kinds, "...");
    desk.press(towards(10));
    desk.drag(towards(50), Event::kShift);
    EXPECT_EQ(dial->angle(), 45.0);
    desk.release(towards(50));
}

TEST_F(Dials, EscapeRefusalAndDisabling)
{
    dial->setAngle(400.0);
    desk.press(towards(90));
    dial->setAngle(5.0); // from elsewhere: shown when the drag has ended
    EXPECT_NEAR(dial->angle(), 450.0, 1.0);
    EXPECT_TRUE(desk.key(Key::Escape));
    EXPECT_EQ(dial->angle(), 400.0);
    desk.release(towards(90));
    desk.press(towards(90));
    dial->setAngle(400.0);
    desk.release(towards(90));
    EXPECT_EQ(dial->angle(), 400.0);
    EXPECT_EQ(dial->kinds, "SCS");
    dial->refuses = true;
    dial->userStep(5.0);
    dial->setEnabled(false);
    dial->userStep(5.0);
    dial->userPress(90.0);
    EXPECT_EQ(dial->kinds, "SCS.");
    EXPECT_EQ(dial->angle(), 400.0);
}

class Swatches : public testing::Test
{
protected:
    Swatches() { swatch->setDataAdaptor(adaptor); }

    static ColourData red(double opacity = 1.0) { return {{1.0, 0.0, 0.0, opacity}}; }

    Kt::Ptr<StoreAdaptor<ColourData>> adaptor = Kt::makePtr<StoreAdaptor<ColourData>>(red());
    Desk desk;
    ValColourSwatch* swatch = desk.add<ValColourSwatch>();
};

TEST_F(Swatches, WhatIsTriedOutInTheChooserIsOneSeries)
{
    swatch->userChoose({0, 0, 0, 1});
    EXPECT_EQ(adaptor->kinds(), "") << "there is no chooser yet";
    adaptor->setNewWidgetValue(red(0.25), eRedrawFlag::Yes);
    desk.click({5, 10});
    ASSERT_TRUE(swatch->isChooserOpen());
    for (const Colour& tried : {Colour{0, 1, 0, 1}, Colour{0, 1, 0, 1}, Colour{0, 0, 1, 1}})
        swatch->userChoose(tried);
    swatch->userAccept();
    EXPECT_EQ(adaptor->kinds(), "SC");
    EXPECT_EQ(adaptor->seriesEnds, 1);
    EXPECT_EQ(adaptor->value, (ColourData{{0, 0, 1, 0.25}})) << "an opacity that is not offered stays";
    swatch->userCancel(); // nothing is open any more
    EXPECT_EQ(adaptor->cancels, 0);
}

TEST_F(Swatches, CancellingPutsTheColourBackWithAJournalAndWithout)
{
    for (const char* kinds : {"SC", "SCS"}) {
        swatch->takeFocus();
        desk.key(Key::Space);
        swatch->userChoose({0, 1, 0, 1});
        swatch->userCancel();
        EXPECT_EQ(adaptor->kinds(), kinds);
        EXPECT_EQ(adaptor->value, red());
        EXPECT_EQ(swatch->getColour(), (Colour{1, 0, 0, 1}));
        adaptor->restoresTo = red();
    }
    swatch->userClick();
    swatch->userCancel();
    EXPECT_EQ(adaptor->cancels, 2) << "nothing was tried out";
    swatch->setEnabled(false);
    swatch->userClick();
    EXPECT_FALSE(swatch->isChooserOpen());
}

TEST_F(Swatches, ATransparentColourIsShownOnChequers)
{
    ColourSwatch::InitArgs args;
    args.hasAlpha = true;
    args.colour = {1.0, 0.0, 0.0, 0.25};
    ColourSwatch one(args);
    const auto chequered = Desk::drawn(one).primitives();
    EXPECT_EQ(chequered.back().colour, args.colour);
    EXPECT_GT(chequered.size(), Desk::drawn(*swatch).primitives().size() + 4);
}

template <class Widget>
class EveryControl : public testing::Test
{
};

using Controls =
    testing::Types<Button, Checkbox, Slider, TextBox, DropDownMenuButton, ColourSwatch, AngleIndicatorWidget>;
TYPED_TEST_SUITE(EveryControl, Controls);

TYPED_TEST(EveryControl, HasAFocusRingAndLooksDisabled)
{
    Desk desk;
    auto* widget = desk.template add<TypeParam>();
    Palette palette;
    palette.setColour(PaletteRole::Focus, Colour::fromRGB(0x010203));
    widget->setPalette(palette);
    EXPECT_FALSE(Desk::draws(*widget, palette.focus()));
    desk.key(Key::Tab);
    EXPECT_TRUE(widget->hasFocus());
    EXPECT_TRUE(Desk::draws(*widget, palette.focus()));

    const unsigned repaints = widget->repaintCount();
    const std::string before = Desk::drawn(*widget).toString();
    widget->setEnabled(false);
    EXPECT_FALSE(widget->hasFocus());
    EXPECT_GT(widget->repaintCount(), repaints);
    EXPECT_NE(Desk::drawn(*widget).toString(), before);
    EXPECT_EQ(Desk::drawn(*widget).depth(), 0u);
}

} // namespace
} // namespace oribund::test
