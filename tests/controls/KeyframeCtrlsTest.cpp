#include "tests/controls/RowSupport.h"

#include "oribund/controls/rows/AngleParamWidget.h"
#include "oribund/controls/rows/KeyframeAngleCtrls.h"
#include "oribund/controls/rows/KeyframeButton.h"
#include "oribund/controls/rows/KeyframeColourCtrls.h"
#include "oribund/controls/rows/KeyframeFloatCtrlsBase.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/entries/NumericEntry.h"
#include "oribund/host/toolkit/entries/ScrubLabel.h"
#include "oribund/host/toolkit/widgets/ValColourSwatch.h"
#include "oribund/host/toolkit/widgets/ValSlider.h"

namespace oribund
{
namespace
{

class FloatRow : public test::RowTest
{
protected:
    FloatRow() { show(*row); }

    NumericEntry& entry() { return in<NumericEntry>(*row); }

    Kt::Ptr<EffectValParam<double>> param = addLimited(0.25, 0.0, 1.0);
    std::unique_ptr<KeyframeFloatCtrlsBase> row =
        std::make_unique<KeyframeFloatCtrlsBase>(handle, param, kWidth, kLabelWidth, 0, &canvas);
};

TEST_F(FloatRow, KeyframeButtonSaysInWhichOfThreeStatesTheParameterIs)
{
    auto& button = in<KeyframeButton>(*row);
    const auto tooltipIs = [&](const wchar_t* begin) {
        return displayText(button.tooltip()).view().starts_with(begin);
    };
    EXPECT_TRUE(tooltipIs(L"Not animated"));
    setEffectTime(0.5);
    button.userClick();
    EXPECT_TRUE(tooltipIs(L"Keyframe here"));
    setEffectTime(0.7);
    EXPECT_TRUE(tooltipIs(L"Animated, no keyframe"));
    EXPECT_EQ(button.getState(), Button::eOff);
    row->setParamIsKeyframable(false);
    EXPECT_FALSE(button.isVisible());
}

TEST_F(FloatRow, NothingThatWasBegunIsWrittenIntoAReplacedParameter)
{
    const auto other = makeReplacement(*param);
    ASSERT_TRUE(entry().takeFocus());
    entry().userEdit(L"77");
    in<ValSlider>(*row).userPress(0.5);
    replace(param->id(), other);
    EXPECT_EQ(other->constant(), 3.0);
    EXPECT_EQ(entry().getShownText(), L"3") << "no percentage any more";
    EXPECT_EQ(in<ValSlider>(*row).getMax(), 8.0);
    in<ValSlider>(*row).userDrag(0.9);
    entry().dropFocus();
    EXPECT_EQ(other->constant(), 3.0);
    EXPECT_TRUE(entry().userCommit(L"4"));
    EXPECT_EQ(other->constant(), 4.0);
}

TEST_F(FloatRow, ADragEndsWithItsGestureAndWithItsAdaptor)
{
    auto& slider = in<ValSlider>(*row);
    slider.userPress(0.5);
    vob.edit->gesture = iGestureJournal::kNone; // as an undo ends it
    param->setConstant(0.125);
    EXPECT_FALSE(slider.isDragging());
    EXPECT_EQ(slider.getValue(), 0.125);
    slider.userDrag(0.75);
    EXPECT_EQ(param->constant(), 0.125);
    ASSERT_TRUE(entry().userScrubStart());
    entry().userScrub(1.0);
    vob.edit->gesture = iGestureJournal::kNone;
    entry().userScrub(2.0);
    EXPECT_FALSE(entry().isScrubbing()) << "it is noticed at the next edit at the latest";
    EXPECT_EQ(vob.edit->begun, 2) << "no gesture is begun that would drop the redo";

    slider.userPress(0.5);
    const auto other = addLimited(0.75, 0.0, 1.0);
    slider.setDataAdaptor(Kt::makePtr<FloatAdaptor>(handle, EffectValParamAccessor<double>(*other)));
    EXPECT_FALSE(slider.isDragging());
    EXPECT_EQ(vob.edit->finished, 1);
    slider.userDrag(0.25);
    EXPECT_EQ(other->constant(), 0.75);
}

TEST_F(FloatRow, EscapeLeavesNoKeyframeWhereTheEditKeepsNoJournal)
{
    vob.edit->keepsJournal = false;
    param->setFunctionType(EffectValParamFnType::Keyframed, 0.0);
    setEffectTime(0.5);
    auto& slider = in<ValSlider>(*row);
    slider.userPress(0.5);
    slider.userDrag(0.75);
    EXPECT_EQ(param->graph()->size(), 2);
    slider.userCancel();
    EXPECT_EQ(param->graph()->size(), 1);
    EXPECT_EQ(slider.getValue(), 0.25);
}

TEST_F(FloatRow, IsOutOfUseWhileTheEditIsReadOnlyAndOnceTheViewerIsGone)
{
    vob.edit->readOnly = true;
    vob.monitor->tell(EffectChangeCode::EditabilityChanged, IdStamp::wildcard());
    auto& slider = in<ValSlider>(*row);
    EXPECT_FALSE(slider.canInteract());
    EXPECT_FALSE(slider.getDataAdaptor()->requestSetValue(0.5, ChangeKind::Single));
    EXPECT_FALSE(row->userReset());
    EXPECT_EQ(param->constant(), 0.25);

    auto viewer = std::make_unique<test::FakeVob>();
    const KeyframeFloatCtrlsBase theirs(viewer->add(effect), param, kWidth, kLabelWidth, 0, &canvas);
    EXPECT_TRUE(theirs.isEnabled());
    viewer.reset();
    EXPECT_FALSE(theirs.isEnabled());
}

TEST_F(FloatRow, OnlyAnimatedRowsAreToldThatTheTimeMoves)
{
    const unsigned before = canvas.repaintCount();
    setEffectTime(0.5);
    EXPECT_EQ(canvas.repaintCount(), before);
    param->setFunctionType(EffectValParamFnType::Keyframed, 0.0);
    param->addKeyframeAt(1.0, 1.0);
    setEffectTime(1.0);
    EXPECT_GT(canvas.repaintCount(), before);
    EXPECT_EQ(entry().getShownText(), L"100 %");
}

class OtherRows : public test::RowTest
{
protected:
    explicit OtherRows(int dials = 0)
    {
        host.memoryPreferences.setPreference("use_dials_for_angles", dials);
        KeyframeAngleCtrls::forgetUseDials();
    }

    ~OtherRows() override { KeyframeAngleCtrls::forgetUseDials(); }

    std::unique_ptr<KeyframeAngleCtrls> makeAngleRow(double low, double high, double value = 0.0)
    {
        angle = addLimited(Angle{value}, Angle{low}, Angle{high});
        return std::make_unique<KeyframeAngleCtrls>(handle, angle, kWidth, kLabelWidth, &canvas);
    }

    Kt::Ptr<EffectValParam<Angle>> angle;
};

class DialRows : public OtherRows
{
protected:
    DialRows()
        : OtherRows(-3)
    {
    }
};

TEST_F(OtherRows, TurnsAndDegreesOfAnAngleAreEditedApart)
{
    const auto row = makeAngleRow(-1e4, 1e4, 725.0);
    NumericEntry& turns = *allIn<NumericEntry>(*row)[0];
    NumericEntry& degrees = *allIn<NumericEntry>(*row)[1];
    EXPECT_EQ(turns.getNumber(), 2.0);
    EXPECT_EQ(degrees.getShownText(), L"5\u00b0");
    EXPECT_TRUE(turns.userCommit(L"0"));
    EXPECT_EQ(angle->constant().degrees, 5.0);
    EXPECT_TRUE(turns.userCommit(L"-1"));
    EXPECT_EQ(angle->constant().degrees, -355.0);
    EXPECT_FALSE(turns.userCommit(L"1.5"));
    EXPECT_EQ(turns.getNumber(), 0.0);

    angle->setConstant(Angle{725.0});
    auto& slider = in<ValSlider>(*row);
    slider.userPress(5.0);
    slider.userDrag(-20.0);
    slider.userDrag(-30.0);
    slider.userRelease();
    EXPECT_EQ(angle->constant().degrees, 690.0) << "a drag below zero costs no turn with every step";
}

TEST_F(OtherRows, WithoutAParameterStayEmpty)
{
    KeyframeAngleCtrls angles(handle, {}, kWidth, kLabelWidth, &canvas);
    KeyframeFloatCtrlsBase numbers(handle, {}, kWidth, kLabelWidth, 0, &canvas);
    for (KeyframeCtrlsBase* const row :
         {static_cast<KeyframeCtrlsBase*>(&angles), static_cast<KeyframeCtrlsBase*>(&numbers)}) {
        row->resize({300, 24});
        EXPECT_FALSE(row->isEnabled());
        EXPECT_FALSE(row->userReset());
    }
}

TEST_F(OtherRows, AnAngleRowHasWhatItsRangeAsksFor)
{
    const auto narrow = makeAngleRow(0.0, 360.0);
    EXPECT_FALSE(in<NumericEntry>(*narrow).isVisible()) << "no whole turns to enter";
    EXPECT_EQ(in<ValSlider>(*narrow).getMax(), 360.0);
    const auto wide = makeAngleRow(-3600.0, 3600.0);
    EXPECT_TRUE(in<NumericEntry>(*wide).isVisible());
    EXPECT_EQ(in<ValSlider>(*wide).getMax(), 359.0);
    EXPECT_EQ(narrow->getHeight(), 24);
    EXPECT_EQ(narrow->calcSliderWidth() - wide->calcSliderWidth(), 36 + UifStd::getWidgetGap());
    wide->resize({150, 24});
    EXPECT_EQ(wide->calcSliderWidth(), 0);
    EXPECT_FALSE(in<ValSlider>(*wide).isVisible());
}

TEST_F(DialRows, StayUnderThePointerInADrag)
{
    const auto row = makeAngleRow(-90.0, 90.0, 10.0);
    auto& dial = in<AngleParamWidget>(*row);
    dial.userPress(10.0);
    dial.userDrag(50.0);
    angle->setConstant(Angle{20.0});
    EXPECT_EQ(dial.getAngle(), 50.0);
    dial.userDrag(120.0);
    EXPECT_EQ(dial.getAngle(), 90.0) << "the limit";
    angle->setConstant(Angle{30.0});
    dial.userRelease();
    EXPECT_EQ(dial.getAngle(), 30.0);
}

TEST_F(DialRows, HaveADialInPlaceOfTheSliderAndAreHigher)
{
    const auto row = makeAngleRow(-3600.0, 3600.0, 725.0);
    EXPECT_EQ(row->getHeight(), 36);
    EXPECT_TRUE(allIn<ValSlider>(*row).empty());
    EXPECT_EQ(in<AngleParamWidget>(*row).getWidgetValue(), 5.0);
    host.memoryPreferences.setPreference("use_dials_for_angles", 0);
    EXPECT_TRUE(KeyframeAngleCtrls::useDials()) << "for the life of the process";
}

TEST_F(OtherRows, AColourIsPickedAsOneSeries)
{
    const auto param = addParam<ColourData>(ColourData{{0.1, 0.2, 0.3, 1.0}});
    KeyframeColourCtrls row(handle, param->id(), kWidth, kLabelWidth, 0, &canvas, KeyframeColourCtrls::Opts::eNone);
    row.setParam(param.get());
    show(row);
    const test::ConstantLog<ColourData> told(*param);

    auto& swatch = in<ValColourSwatch>(row);
    Button& picker = *allIn<Button>(row)[1];
    picker.userClick();
    ASSERT_TRUE(swatch.isChooserOpen());
    swatch.userChoose(Colour{1.0, 0.0, 0.0, 0.5});
    swatch.userChoose(Colour{0.0, 1.0, 0.0, 0.5});
    swatch.userAccept();
    EXPECT_EQ(told.kinds, (std::vector{ChangeKind::Start, ChangeKind::Continuation}));
    EXPECT_EQ(param->constant(), (ColourData{{0.0, 1.0, 0.0, 1.0}})) << "the opacity is not for choosing here";

    effect->editable = false;
    vob.monitor->tell(EffectChangeCode::EditabilityChanged, effect->id());
    EXPECT_FALSE(swatch.isEnabled() || picker.isEnabled());
    row.setParam(nullptr);
    EXPECT_FALSE(row.isEnabled());
}

TEST_F(OtherRows, StandInTheSameColumns)
{
    const auto angleRow = makeAngleRow(-3600.0, 3600.0);
    const auto number = addLimited(1.0, 0.0, 2.0);
    KeyframeFloatCtrlsBase floatRow(handle, number, kWidth, kLabelWidth, 0, &canvas);
    for (KeyframeCtrlsBase* row : std::vector<KeyframeCtrlsBase*>{angleRow.get(), &floatRow}) {
        const Kt::Box<int> entry = allIn<NumericEntry>(*row).back()->box();
        EXPECT_EQ(in<ValSlider>(*row).box().left, 20 + kLabelWidth + 2 * UifStd::getWidgetGap());
        EXPECT_EQ(entry.right, kWidth);
        EXPECT_EQ(entry.width(), row->calcValEntryWidth());
    }
    std::vector<TabOrderable*> stops;
    floatRow.getTabOrderables(stops);
    EXPECT_EQ(stops.size(), 3u) << "button, slider, entry";
}

} // namespace
} // namespace oribund
