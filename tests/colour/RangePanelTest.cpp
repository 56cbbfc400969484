#include "tests/controls/RowSupport.h"

#include "oribund/colour/ColourGrabberButton.h"
#include "oribund/colour/ColourOffsetPanel.h"
#include "oribund/colour/ColourRangePanel.h"
#include "oribund/colour/ColourWheel.h"
#include "oribund/colour/TolerantRangeEditor.h"
#include "oribund/controls/rows/KeyframeButton.h"
#include "oribund/host/base/HueSatLum.h"
#include "oribund/host/canvas/RecordingRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/entries/NumericEntry.h"

#include <cmath>
#include <utility>

namespace oribund
{
namespace
{

/** An effect with a colour range: three parameters in a row. */
class RangePanel : public test::RowTest
{
protected:
    using Range = Kt::Ptr<EffectValParam<ColourData>>;

    Range addRange(const ColourData& value, double low, double high, unsigned flags = ParamDisplay::kColourRange)
    {
        return addLimited(value, ColourData{{low, low, low, low}}, ColourData{{high, high, high, high}}, flags);
    }

    std::unique_ptr<ColourRangePanel> makePanel(unsigned index = 0)
    {
        auto panel = std::make_unique<ColourRangePanel>(handle, index, kWidth, Palette(), &canvas);
        show(*panel);
        return panel;
    }

    Range hue = addRange({{350.0, 355.0, 5.0, 10.0}}, -3600.0, 3600.0);
    Range saturation = addRange({{0.1, 0.2, 0.6, 0.8}}, 0.0, 1.0);
    Range luminance = addRange({{0.0, 0.0, 1.0, 1.0}}, 0.0, 1.0);
};

TEST_F(RangePanel, HasARowForEachParameterOfTheRangeThatIsThere)
{
    EXPECT_EQ(ColourRangePanel::calcHeight(),
              3 * (UifStd::getRowHeight() + UifStd::getWidgetGap()) + 2 * UifStd::getWidgetGap());
    auto panel = makePanel();
    EXPECT_EQ(panel->getHeight(), ColourRangePanel::calcHeight());
    ASSERT_TRUE(panel->editorOf(2));
    EXPECT_EQ(panel->editorOf(0)->getRanges(), (ColourData{{350.0, 355.0, 365.0, 370.0}}));
    EXPECT_EQ(makePanel(1)->editorOf(2), nullptr) << "the third follower is missing";
    EXPECT_EQ(makePanel(2)->getHeight(), TolerantRangeEditor::calcHeight());
    EXPECT_EQ(makePanel(static_cast<unsigned>(-1))->editorOf(0), nullptr);
}

/** A viewer that offers a picker and knows histograms. */
class ColourVob : public test::FakeVob, private iColourPicker, private iFrameStatistics
{
public:
    iColourPicker* colourPicker() override { return this; }

    iFrameStatistics* frameStatistics() override { return this; }

    void pick(const Colour& colour, unsigned modifiers = 0)
    {
        picks_.notify({ColourPickEvent::Kind::Picked, open, {&colour, 1}, modifiers});
    }

    Number open = kNone;
    Histogram counted{};
    Notifier<iFrameStatistics> changed;

private:
    Number begin(const FXViewHandle&) override { return open = ++last_; }

    void end(Number number) override
    {
        if (number == std::exchange(open, kNone))
            picks_.notify({ColourPickEvent::Kind::Ended, number});
    }

    Notifier<ColourPickEvent>& picks() override { return picks_; }

    const Histogram* histogram(const IdStamp&, ColourAxis) override { return &counted; }

    Notifier<iFrameStatistics>& changes() override { return changed; }

    Number last_ = kNone;
    Notifier<ColourPickEvent> picks_;
};

class PickedRange : public RangePanel
{
protected:
    PickedRange() { show(*panel); }

    double hueAt(std::size_t component) const { return std::remainder(hue->constant()[component], 360.0); }

    ColourVob viewer;
    FXViewHandle view = viewer.add(effect, 10.0, 20.0);
    std::unique_ptr<ColourRangePanel> panel = std::make_unique<ColourRangePanel>(view, 0U, kWidth, Palette(), &canvas);
    ColourGrabberButton& grabber = in<ColourGrabberButton>(*panel);
};

TEST_F(PickedRange, PicksBecomeRangesInOneStepAndTheButtonStaysDown)
{
    ASSERT_TRUE(grabber.isVisible());
    EXPECT_FALSE(in<ColourGrabberButton>(*makePanel()).isVisible()) << "a viewer without a picker";
    grabber.userClick();
    viewer.pick(colourOfHSV(120.0, 0.8, 0.8));
    EXPECT_EQ(viewer.edit->steps, 1);
    EXPECT_EQ(viewer.edit->title, L"Pick colour range");
    EXPECT_LT(hueAt(1), 120.0);
    EXPECT_GT(hueAt(2), 120.0);
    EXPECT_GT(saturation->constant()[0], 0.5);
    const ColourData green = hue->constant();
    viewer.pick(colourOfHSV(160.0, 0.8, 0.8), Event::kShift);
    EXPECT_EQ(hue->constant()[1], green[1]);
    EXPECT_GT(hueAt(2), 160.0);
    viewer.pick(colourOfHSV(160.0, 0.8, 0.8), Event::kAlt);
    EXPECT_LT(hueAt(3), 160.0);
    EXPECT_TRUE(grabber.isPicking());
    grabber.userClick();
    EXPECT_EQ(viewer.open, iColourPicker::kNone);
    EXPECT_EQ(grabber.getState(), Button::eOff);
}

TEST_F(PickedRange, NothingIsPickedForAnEffectThatIsLockedOrGone)
{
    grabber.userClick();
    effect->editable = false;
    viewer.pick({0.0, 1.0, 0.0});
    EXPECT_EQ(hue->constant()[0], 350.0);
    EXPECT_FALSE(ColourRangePanel::setColourRange(ColEyeDropBase::rangeOf({}), view, 7));
    panel->setActive(false);
    EXPECT_EQ(viewer.open, iColourPicker::kNone);
    panel->setActive(true);
    grabber.userClick();
    panel.reset();
    EXPECT_EQ(viewer.open, iColourPicker::kNone) << "the panel has gone";
}

TEST_F(PickedRange, AColourIsShownOrStored)
{
    panel->setCol({0.0, 0.0, 1.0}, false);
    EXPECT_EQ(hue->constant()[0], 350.0);
    EXPECT_LT(panel->editorOf(0)->getRanges()[1], 240.0);
    EXPECT_GT(panel->editorOf(0)->getRanges()[1], 220.0);
    panel->setCol({0.0, 0.0, 1.0}, true);
    EXPECT_LT(hueAt(1), -120.0);
}

TEST_F(PickedRange, AStripShowsItsHuesAboutTheRangeAndTheHistogramOverThem)
{
    TolerantRangeEditor& strip = *panel->editorOf(0);
    const auto drawn = [&strip] {
        RecordingRenderer renderer;
        strip.draw(renderer);
        return renderer;
    };
    const RecordingRenderer plain = drawn();
    const std::vector<Primitive> columns = plain.ofKind(Primitive::Kind::Rect);
    const int width = strip.getWidth() - 2 * (RangeGeometry::nobbleSize() / 2);
    for (const int i : {0, width / 4, width - 1}) {
        const double shown = std::fmod(i * 180.0 / width + 360.0 - 90.0, 360.0);
        EXPECT_EQ(columns[static_cast<std::size_t>(i)].box.width(), 1.0);
        EXPECT_EQ(columns[static_cast<std::size_t>(i)].colour.toRGB(), colourOfHSV(shown, 1.0, 1.0).toRGB()) << i;
    }
    viewer.counted[3] = 1.0F;
    const unsigned before = strip.repaintCount();
    viewer.changed.notify(static_cast<iFrameStatistics&>(*viewer.frameStatistics()));
    EXPECT_GT(strip.repaintCount(), before);
    const std::vector<Primitive> pictures = drawn().ofKind(Primitive::Kind::Image);
    ASSERT_EQ(pictures.size(), 1U);
    EXPECT_EQ(pictures[0].image, drawn().ofKind(Primitive::Kind::Image).at(0).image) << "kept";
    viewer.counted[7] = 2.0F;
    EXPECT_NE(pictures[0].image, drawn().ofKind(Primitive::Kind::Image).at(0).image);
}

TEST_F(RangePanel, ARowResetsAndKeyframesItsOwnAxis)
{
    auto panel = makePanel();
    auto& row = *allIn<KeyframeCtrlsBase>(*panel).at(1);
    panel->editorOf(1)->userMove(RangePart::handle(0), 0.05);
    EXPECT_TRUE(row.userReset());
    EXPECT_EQ(saturation->constant(), saturation->getDefault());
    in<KeyframeButton>(row).userClick();
    EXPECT_EQ(saturation->functionType(), EffectValParamFnType::Keyframed);
    EXPECT_EQ(hue->functionType(), EffectValParamFnType::Constant);
    // Whole turns count between keyframes.
    hue->setFunctionType(EffectValParamFnType::Keyframed, 0.0);
    hue->setKeyframeValueAt(0, ColourData{{700.0, 710.0, 720.0, 730.0}});
    panel->editorOf(0)->userMove(RangePart::section(1), 5.0);
    EXPECT_EQ(hue->getValue(0.0)[0], 705.0);
}

class OffsetPanel : public RangePanel
{
protected:
    OffsetPanel() { show(*panel); }

    Range lift = addRange({{0.0, 0.0, 0.0, 0.5}}, -1.0, 1.0, ParamDisplay::kColourOffset);
    std::unique_ptr<ColourOffsetPanel> panel =
        std::make_unique<ColourOffsetPanel>(handle, 3U, kWidth, Palette(), &canvas);
};

TEST_F(OffsetPanel, TheWheelMovesColoursApartAndTheLevelMovesThemAlike)
{
    ColourWheel& wheel = panel->wheel();
    EXPECT_EQ(wheel.getReach(), 0.5);
    const XY<int> centre = wheel.box().centre();
    canvas.inject(Event::mousePress(centre));
    canvas.inject(Event::mouseMove({centre.x, centre.y - 500}, MouseButton::Left));
    EXPECT_NEAR(lift->constant()[0], 0.5, 0.01) << "red is up, no further than the rim";
    EXPECT_NEAR(lift->constant()[1], -0.25, 0.01);
    EXPECT_EQ(lift->constant()[3], 0.5);
    canvas.inject(Event::mouseRelease({centre.x, centre.y - 500}));
    EXPECT_EQ(vob.edit->finished, 1);
    const auto entries = allIn<NumericEntry>(*panel);
    EXPECT_TRUE(entries.at(0)->userCommit(L"0.25"));
    EXPECT_NEAR(lift->constant()[0], 0.75, 0.01);
    EXPECT_NEAR(lift->constant()[2], 0.0, 0.01);
    EXPECT_TRUE(entries.at(3)->userCommit(L"-0.5"));
    EXPECT_EQ(lift->constant()[2], -0.5);
    canvas.inject(Event::mouseDoubleClick(centre));
    EXPECT_NEAR(lift->constant()[0], lift->constant()[2], 1e-9) << "no offset, the level stays";
    EXPECT_TRUE(panel->userReset());
    EXPECT_EQ(lift->constant(), lift->getDefault());
}

TEST_F(OffsetPanel, TheWheelIsSetByKeysAndByAScreenReader)
{
    ColourWheel& wheel = panel->wheel();
    ASSERT_TRUE(wheel.takeFocus());
    canvas.inject(Event::keyPress(Key::Up, Event::kShift));
    EXPECT_NEAR(lift->constant()[0], 0.05, 1e-9) << "a tenth of the reach";
    EXPECT_EQ(wheel.accessible(1).value, L"10 %");
    EXPECT_TRUE(wheel.accessibleSetNumber(120.0, 0));
    EXPECT_NEAR(lift->constant()[1], 0.05, 1e-9);
    EXPECT_TRUE(wheel.accessibleSetNumber(0.5, 1));
    EXPECT_NEAR(lift->constant()[1], 0.25, 1e-9);
    canvas.inject(Event::keyPress(Key::Home));
    EXPECT_NEAR(lift->constant()[1], 0.0, 1e-9);
    wheel.userPress();
    wheel.userDrag({0.1, 0.1});
    canvas.inject(Event::keyPress(Key::Escape));
    EXPECT_NEAR(lift->constant()[1], 0.0, 1e-9);
    effect->editable = false;
    setEffectTime(0.5);
    canvas.inject(Event::keyPress(Key::Up));
    EXPECT_NEAR(lift->constant()[0], 0.0, 1e-9);
}

} // namespace
} // namespace oribund
