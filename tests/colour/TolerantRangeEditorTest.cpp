#include "tests/controls/RowSupport.h"

#include "oribund/colour/ShadowMidtoneHighlightExtentsEditor.h"
#include "oribund/colour/TitledTonalRangeEditor.h"
#include "oribund/colour/TolerantRangeEditor.h"
#include "oribund/controls/rows/KeyframeButton.h"
#include "oribund/host/canvas/RecordingRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/entries/NumericEntry.h"
#include "oribund/host/toolkit/widgets/Label.h"

#include <limits>

namespace oribund
{
namespace
{

/** A strip of an animatable range, with the user's mouse and keys. */
class RangeStrip : public test::RowTest
{
protected:
    RangeStrip()
    {
        strip->setDataAdaptor(adaptor);
        show(*strip);
    }

    /** The middle of a handle, as the pointer finds it. */
    XY<int> at(std::size_t which) const
    {
        const XY<double> centre = strip->getNobbleArea(which).centre();
        return {static_cast<int>(centre.x), strip->getHeight() - 1 - static_cast<int>(centre.y)};
    }

    /** So many pixels of a drag are that far on an axis from 0 to 1. */
    double far(int pixels) const { return static_cast<double>(pixels) / strip->getWidth(); }

    void press(const XY<int>& at, unsigned modifiers = 0)
    {
        canvas.inject(Event::mousePress(at, MouseButton::Left, modifiers));
    }

    void drag(const XY<int>& to, unsigned modifiers = 0)
    {
        canvas.inject(Event::mouseMove(to, MouseButton::Left, modifiers));
    }

    bool key(Key which, unsigned modifiers = 0) { return canvas.inject(Event::keyPress(which, modifiers)); }

    void expectRange(double a, double b, double c, double d)
    {
        const ColourData wanted{{a, b, c, d}};
        for (std::size_t i = 0; i < 4; ++i)
            EXPECT_NEAR(param->constant()[i], wanted[i], 1e-9) << "component " << i;
    }

    const ColourData start{{0.1, 0.3, 0.6, 0.8}};
    Kt::Ptr<EffectValParam<ColourData>> param =
        addLimited(start, ColourData(), ColourData{{1.0, 1.0, 1.0, 1.0}}, ParamDisplay::kTonalRanges);
    Kt::Ptr<ColourRangeAdaptor> adaptor = Kt::makePtr<ColourRangeAdaptor>(handle, ColRangeInterfaceTraits(*param));
    std::unique_ptr<TolerantRangeEditor> strip =
        std::make_unique<TolerantRangeEditor>(static_cast<unsigned short>(400), Palette(), &canvas);
};

TEST_F(RangeStrip, ADragOfAHandleOrASectionIsOneGesture)
{
    const XY<int> nobble = at(1);
    press(nobble);
    drag({nobble.x + 20, nobble.y});
    drag({nobble.x + 40, nobble.y});
    expectRange(0.1, 0.3 + far(40), 0.6, 0.8);
    canvas.inject(Event::mouseRelease({nobble.x + 40, nobble.y}));
    EXPECT_EQ(vob.edit->begun, 1);
    EXPECT_EQ(vob.edit->finished, 1);
    param->setConstant(start);
    const XY<int> band{200, 15};
    press(band);
    drag({5000, 15});
    expectRange(0.3, 0.5, 0.8, 1.0);
    EXPECT_TRUE(key(Key::Escape));
    EXPECT_EQ(param->constant(), start);
}

TEST_F(RangeStrip, ShiftMakesADragFineWithoutAJump)
{
    const XY<int> nobble = at(0);
    press(nobble);
    drag({nobble.x + 20, nobble.y});
    drag({nobble.x + 20, nobble.y}, Event::kShift);
    expectRange(0.1 + far(20), 0.3, 0.6, 0.8);
    drag({nobble.x + 40, nobble.y}, Event::kShift);
    expectRange(0.1 + far(22), 0.3, 0.6, 0.8);
}

TEST_F(RangeStrip, IsSetByTheKeyboardAlone)
{
    ASSERT_TRUE(strip->takeFocus());
    EXPECT_TRUE(key(Key::Right));
    expectRange(0.11, 0.3, 0.6, 0.8);
    key(Key::Tab);
    key(Key::Left, Event::kCtrl);
    expectRange(0.11, 0.299, 0.6, 0.8);
    key(Key::Tab);
    key(Key::Left, Event::kShift);
    expectRange(0.11, 0.299, 0.5, 0.8);
    key(Key::Tab);
    key(Key::End);
    expectRange(0.11, 0.299, 0.5, 1.0);
    key(Key::Tab);
    EXPECT_EQ(strip->currentAccessiblePart(), 4);
    key(Key::Home);
    expectRange(0.0, 0.189, 0.39, 0.89);
    EXPECT_FALSE(strip->usesKey(Event::keyPress(Key::Tab))) << "Tab goes on to the next widget";
    EXPECT_TRUE(strip->usesKey(Event::keyPress(Key::Tab, Event::kShift)));
    EXPECT_EQ(vob.edit->finished, 5) << "a step for each";
}

TEST_F(RangeStrip, NumbersAreTypedOverTheHandles)
{
    const auto type = [this](const wchar_t* text) {
        for (; *text; ++text)
            canvas.inject(Event::character(*text));
    };
    const XY<int> nobble = at(2);
    press(nobble);
    canvas.inject(Event::mouseRelease(nobble));
    canvas.inject(Event::mouseDoubleClick(nobble));
    canvas.inject(Event::mouseRelease(nobble));
    auto& entry = in<NumericEntry>(*strip);
    ASSERT_TRUE(entry.hasFocus());
    EXPECT_EQ(entry.getShownText(), L"60 %");
    type(L"45");
    key(Key::Tab);
    EXPECT_EQ(entry.getShownText(), L"80 %") << "on to the next handle";
    type(L"70");
    key(Key::Enter);
    expectRange(0.1, 0.3, 0.45, 0.7);
    EXPECT_FALSE(entry.isVisible());
    EXPECT_TRUE(strip->hasFocus());
    EXPECT_EQ(strip->currentAccessiblePart(), 3);
    key(Key::Enter);
    type(L"5");
    key(Key::Escape);
    expectRange(0.1, 0.3, 0.45, 0.7);
    strip->userSetComponent(3, 0.2);
    expectRange(0.1, 0.3, 0.45, 0.45);
}

TEST_F(RangeStrip, SurvivesAParameterThatIsLockedOrGoesInADrag)
{
    press(at(1));
    drag({at(1).x + 30, at(1).y});
    const ColourData dragged = param->constant();
    effect->editable = false;
    setEffectTime(0.5); // hears of it
    EXPECT_FALSE(strip->isEnabled());
    drag({10, 3});
    EXPECT_EQ(param->constant(), dragged);
    EXPECT_FALSE(key(Key::Right));
    effect->editable = true;
    setEffectTime(0.6);
    press(at(1));
    replace(param->id(), nullptr);
    drag({300, 3});
    canvas.inject(Event::mouseRelease({300, 3}));
    EXPECT_EQ(param->constant(), dragged);
}

TEST_F(RangeStrip, AnAnimatedRangeGetsOneKeyframeADrag)
{
    param->setFunctionType(EffectValParamFnType::Keyframed, 0.0);
    setEffectTime(0.5);
    const XY<int> band{200, 15};
    press(band);
    drag({210, 15});
    drag({220, 15});
    canvas.inject(Event::mouseRelease({220, 15}));
    EXPECT_EQ(param->graph()->size(), 2);
    EXPECT_NEAR(param->getValue(0.5)[0], 0.1 + far(20), 1e-9);
    EXPECT_EQ(vob.edit->finished, 1);
}

TEST_F(RangeStrip, OnACircleARangeIsEditedFromTheFirstTurn)
{
    TolerantRangeEditor circular(static_cast<unsigned short>(400), Palette(), &canvas);
    circular.setCircularValue(180.0, 360.0);
    circular.setNumbers({1, 1.0, L"\u00b0"}, 1.0);
    const auto hue = addLimited(ColourData{{710.0, 715.0, 5.0, 10.0}}, ColourData{{-1e4, -1e4, -1e4, -1e4}},
                                ColourData{{1e4, 1e4, 1e4, 1e4}}, ParamDisplay::kColourRange);
    circular.setDataAdaptor(Kt::makePtr<ColourRangeAdaptor>(handle, ColRangeInterfaceTraits(*hue)));
    EXPECT_EQ(circular.getRanges(), (ColourData{{710.0, 715.0, 725.0, 730.0}}));
    EXPECT_EQ(circular.componentText(3), L"10\u00b0");
    ASSERT_TRUE(circular.open());
    circular.userMove(RangePart::handle(3), 5.0);
    EXPECT_EQ(circular.getRanges(), (ColourData{{-10.0, -5.0, 5.0, 15.0}})) << "as no keyframes count turns";
    circular.userSetComponent(3, 20.0);
    EXPECT_EQ(circular.getRanges()[3], 20.0);
    hue->setConstant({{0.0, 0.0, 360.0, 360.0}});
    circular.userMove(RangePart::section(0), 30.0);
    EXPECT_EQ(circular.getRanges(), (ColourData{{120.0, 120.0, 270.0, 270.0}})) << "what was seen of all hues";
    const double nothing = std::numeric_limits<double>::quiet_NaN();
    circular.setRangeDefinition({{nothing, 0.0, 1.0, 2.0}});
    circular.userSetComponent(0, nothing);
    EXPECT_EQ(circular.getRanges()[0], 120.0);
}

TEST_F(RangeStrip, SaysWhatItIsAndItsHandlesAre)
{
    strip->setAccessibleName(UIString(L"Tones"));
    EXPECT_EQ(strip->accessible().value, L"10 %, 30 %, 60 %, 80 %");
    const AccessibleDescription band = strip->accessible(2);
    EXPECT_EQ(displayText(band.name), L"Tones end of the full selection");
    EXPECT_EQ(band.role, AccessibleRole::Slider);
    ASSERT_TRUE(band.number);
    EXPECT_NEAR(band.number->min, 0.3, 1e-9);
    EXPECT_NEAR(band.number->max, 0.8, 1e-9);
    EXPECT_TRUE(band.box.contains(at(2)));
    EXPECT_TRUE(strip->accessibleSetNumber(0.7, 2));
    expectRange(0.1, 0.3, 0.7, 0.8);
    EXPECT_TRUE(strip->accessibleSetNumber(0.55, 4));
    expectRange(0.15, 0.35, 0.75, 0.85);
    EXPECT_EQ(strip->accessiblePartAt(at(3)), 3);
    canvas.inject(Event::mouseMove(at(3)));
    EXPECT_TRUE(displayText(strip->tooltip()).view().starts_with(L"end of the upper soft edge: 85 %"));
}

TEST_F(RangeStrip, ATitledRowBringsKeyframesDefaultAndReset)
{
    TitledTonalRangeEditor row(L"Tones", 300, Palette(), &canvas);
    row.setDataAdaptor(adaptor);
    show(row);
    EXPECT_EQ(row.getHeight(), TolerantRangeEditor::calcHeight());
    EXPECT_EQ(displayText(row.editor().componentName(0)), L"end of the full shadows");
    RecordingRenderer renderer;
    row.drawTree(renderer);
    EXPECT_TRUE(renderer.findText(L"Tones"));
    row.editor().userMove(RangePart::handle(0), 0.1);
    EXPECT_NE(param->constant(), start);
    canvas.inject(Event::mouseDoubleClick(in<Label>(row).box().centre()));
    EXPECT_EQ(param->constant(), start);
    in<KeyframeButton>(row).userClick();
    EXPECT_EQ(param->functionType(), EffectValParamFnType::Keyframed);
    row.setDataAdaptor({});
    EXPECT_FALSE(in<KeyframeButton>(row).isVisible());
}

} // namespace
} // namespace oribund
