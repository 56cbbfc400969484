#include "tests/controls/BindingFixture.h"

#include "oribund/controls/binding/DegreesParamAdaptor.h"
#include "oribund/controls/rows/KeyframeButtonAdaptor.h"

#include <cmath>

namespace oribund
{
namespace
{

using test::FakeWidget;

class Writing : public test::Binding
{
protected:
    template <class Adaptor, class P, class... More>
    Kt::Ptr<Adaptor> adaptorFor(const Kt::Ptr<EffectValParam<P>>& param, More... more)
    {
        using Accessor = std::remove_cvref_t<decltype(accessorOf(std::declval<Adaptor&>()))>;
        return Kt::makePtr<Adaptor>(handle, Accessor(*param, more...));
    }

    template <class T, class A, class O>
    static A& accessorOf(EffectValParamAdaptor<T, A, O>&);
};

TEST_F(Writing, AddsAKeyframeOfItsOwnOnlyWhereThereIsNone)
{
    const auto param = addParam(1.0);
    EffectValParamAccessor<double> accessor(*param);
    EXPECT_EQ(accessor.addKeyframe(effect, 2.0, 0.5, ChangeKind::Single), 0);
    EXPECT_EQ(param->getValue(0.5), 1.0) << "it is constant as before";
    param->setFunctionType(EffectValParamFnType::Keyframed, 0.25);
    EXPECT_EQ(accessor.addKeyframe(effect, 3.0, 0.75, ChangeKind::Single), 1);
    EXPECT_EQ(accessor.addKeyframe(effect, 4.0, 0.5, ChangeKind::Single), -1);
    EXPECT_EQ(param->getValue(0.5), 2.0);
    const auto flag = addParam(true);
    EXPECT_EQ(EffectValParamAccessor<bool>(*flag).addKeyframe(effect, true, 0.5, ChangeKind::Single), -1);
}

TEST_F(Writing, ASeriesStartsOnceAndGoesOnUntilItIsEnded)
{
    const auto param = addParam(ColourData{});
    const test::ConstantLog log(*param);
    const auto adaptor = adaptorFor<ColourAdaptor>(param);
    FakeWidget<ColourData> widget;
    attach(widget, adaptor);
    adaptor->setInChangeSeries(true);

    EXPECT_FALSE(widget.ask(ColourData{{NAN}}, ChangeKind::Start)) << "refused, so nothing has begun";
    widget.ask(ColourData{{0.1}}, ChangeKind::Single);
    widget.ask(ColourData{{0.2}}, ChangeKind::Start);
    widget.ask(ColourData{{0.3}}, ChangeKind::Single);
    widget.finish();
    widget.ask(ColourData{{0.4}}, ChangeKind::Continuation);
    EXPECT_EQ(log.kinds,
              (std::vector{ChangeKind::Start, ChangeKind::Continuation, ChangeKind::Continuation, ChangeKind::Start}));
}

TEST_F(Writing, ATextOfAnAngleKeepsAllItsDigits)
{
    const auto angle = addParam(Angle{-720.0});
    const auto text = Kt::makePtr<DegreesParamAdaptor<WString>>(handle, *angle);
    const auto raw = Kt::makePtr<RawDegreesParamAdaptor<WString>>(handle, *angle);
    EXPECT_EQ(text->getDataValue(), WString(L"0")) << "and zero no sign";
    for (const double fine : {12.3456789012, 372.3456789012}) {
        angle->setConstant(Angle{fine});
        EXPECT_TRUE(text->requestSetValue(text->getDataValue(), ChangeKind::Single));
        EXPECT_TRUE(raw->requestSetValue(raw->getDataValue(), ChangeKind::Single));
        EXPECT_EQ(angle->constant().degrees, fine);
    }
}

TEST_F(Writing, ASeriesOfDegreesHasTheTurnsOfItsStartUntilTimeOrValueIsNotItsOwn)
{
    const auto angle = addParam(Angle{725.0});
    const auto adaptor = Kt::makePtr<DegreesParamAdaptor<double>>(handle, *angle);
    const auto drag = [&](double degrees, ChangeKind kind = ChangeKind::Continuation) {
        EXPECT_TRUE(adaptor->requestSetValue(degrees, kind));
        return angle->getValue(adaptor->getClampedTime()).degrees;
    };
    EXPECT_EQ(drag(10.0, ChangeKind::Start), 730.0);
    EXPECT_EQ(drag(-5.0), 715.0);
    EXPECT_EQ(drag(20.0), 740.0) << "no turn is lost on the way below zero and back";
    angle->setConstant(Angle{1090.0});
    EXPECT_EQ(drag(30.0), 1110.0) << "somebody else has changed it";

    angle->setConstant(Angle{0.0});
    angle->setFunctionType(EffectValParamFnType::Keyframed, 0.0);
    angle->addKeyframeAt(1.0, Angle{3600.0});
    setEffectTime(0.0);
    EXPECT_EQ(drag(0.0, ChangeKind::Start), 0.0);
    setEffectTime(0.5);
    EXPECT_EQ(drag(45.0), 1845.0) << "the time moves during a drag";

    // At the top of its range an angle can be changed, and no turn is made up.
    const auto limited = Kt::makePtr<EffectValParam<Angle>>(ParamInfo{}, Angle{360.0}, Angle{0.0}, Angle{360.0});
    effect->addParam(limited);
    const auto text = Kt::makePtr<DegreesParamAdaptor<WString>>(handle, *limited);
    EXPECT_TRUE(text->requestSetValue(L"90", ChangeKind::Single));
    EXPECT_EQ(limited->constant().degrees, 90.0);
    EXPECT_TRUE(text->requestSetValue(L"-30", ChangeKind::Single));
    EXPECT_EQ(limited->constant().degrees, 0.0);
}

TEST_F(Writing, TextThatIsNoNumberLeavesTheParameterAsItIs)
{
    const auto number = addParam(1.5);
    const auto angle = addParam(Angle{30.0});
    const auto colour = addParam(ColourData{{0.25, 0.5, 0.75, 1.0}});
    const std::vector<Kt::Ptr<ValAdaptorBase<WString>>> adaptors{
        Kt::Ptr<ValAdaptorBase<WString>>(adaptorFor<FloatTextAdaptor>(number)),
        Kt::Ptr<ValAdaptorBase<WString>>(adaptorFor<AngleTextAdaptor>(angle)),
        Kt::Ptr<ValAdaptorBase<WString>>(Kt::makePtr<DegreesParamAdaptor<WString>>(handle, *angle)),
        Kt::Ptr<ValAdaptorBase<WString>>(adaptorFor<ColourComponentTextAdaptor>(colour, 1u)),
    };
    for (const auto& adaptor : adaptors) {
        const WString before = adaptor->getDataValue();
        for (const wchar_t* text : {L"", L"abc", L"12px", L"1e999", L"nan", L"1,5"})
            EXPECT_FALSE(adaptor->requestSetValue(text, ChangeKind::Single)) << toUTF8(WString(text)).c_str();
        EXPECT_EQ(adaptor->getDataValue(), before);
        EXPECT_TRUE(adaptor->requestSetValue(L" 0.125 ", ChangeKind::Single));
        EXPECT_EQ(adaptor->getDataValue(), WString(L"0.125"));
    }
}

TEST_F(Writing, AComponentIsWrittenWithoutTouchingTheOthers)
{
    const auto colour = addParam(ColourData{{0.25, 0.5, 0.75, 1.0}});
    EXPECT_TRUE(adaptorFor<ColourComponentAdaptor>(colour, 2u)->requestSetValue(0.1, ChangeKind::Single));
    EXPECT_EQ(colour->constant(), (ColourData{{0.25, 0.5, 0.1, 1.0}}));

    const auto position = addParam(Vector2d{0.1, 0.2});
    position->setFunctionType(EffectValParamFnType::Keyframed, 0.0);
    setEffectTime(1.0);
    const auto y = adaptorFor<PositionAdaptor>(position, 1u);
    EXPECT_TRUE(y->requestSetValue(0.6, ChangeKind::Single));
    EXPECT_EQ(position->getValue(1.0), (Vector2d{0.1, 0.6}));
    EXPECT_EQ(position->getValue(0.0), (Vector2d{0.1, 0.2}));
    setEffectTime(0.5);
    EXPECT_NEAR(y->getDataValue(), 0.4, 1e-12);

    const auto beyond = adaptorFor<PositionAdaptor>(position, 2u);
    EXPECT_EQ(beyond->getDataValue(), 0.0);
    EXPECT_FALSE(beyond->requestSetValue(0.5, ChangeKind::Single));
    EXPECT_EQ(PosAccessor(*position, 2).addKeyframe(effect, 0.5, 0.5, ChangeKind::Single), -1);
}

TEST_F(Writing, TheKeyframeButtonAnimatesAddsRemovesAndMakesConstantAgain)
{
    using Button = KeyframeButtonAdaptor<EffectValParamAccessor<double>>;
    const auto param = addParam(3.0);
    const auto adaptor = Kt::makePtr<Button>(handle, EffectValParamAccessor<double>(*param));
    FakeWidget<String> button;
    attach(button, adaptor);
    EXPECT_EQ(button.shown.back(), String(KeyframeState::kNone));

    adaptor->widgetLeftClicked();
    EXPECT_EQ(button.shown.back(), String(KeyframeState::kHere));
    param->setKeyframeValueAt(0, 5.0);
    setEffectTime(0.5);
    EXPECT_EQ(button.shown.back(), String(KeyframeState::kElsewhere));
    adaptor->widgetLeftClicked();
    EXPECT_EQ(param->graph()->size(), 2);
    EXPECT_EQ(param->getValue(0.5), 5.0) << "a keyframe does not change the value";
    adaptor->widgetLeftClicked();
    EXPECT_EQ(button.shown.back(), String(KeyframeState::kElsewhere));
    setEffectTime(0.0);
    adaptor->widgetLeftClicked();
    EXPECT_EQ(button.shown.back(), String(KeyframeState::kNone));
    EXPECT_EQ(param->functionType(), EffectValParamFnType::Constant);
    EXPECT_EQ(param->constant(), 5.0) << "the last keyframe leaves its value behind";

    effect->editable = false;
    adaptor->widgetLeftClicked();
    EXPECT_EQ(param->functionType(), EffectValParamFnType::Constant);
}

} // namespace
} // namespace oribund
