#include "oribund/host/effects/params/EffectValParam.h"
#include "oribund/host/effects/params/ParamVisitor.h"
#include "tests/effects/CurveSupport.h"
#include "tests/support/Listener.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

using namespace oribund;
using namespace oribund::test;

namespace
{

constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr auto kConstant = EffectValParamFnType::Constant;
constexpr auto kKeyframed = EffectValParamFnType::Keyframed;

/** Writes down, in order, what the three servers of a parameter tell. */
class Log
{
public:
    explicit Log(EffectValParam<double>& param)
        : param_(param)
    {
    }

    std::string take() { return std::exchange(text_, {}); }

private:
    EffectValParam<double>& param_;
    std::string text_;
    Listener<ValServerEvent<double>> value_{param_.constantServer().notifier(), [this](const auto& event) {
                                                text_ += event.kind == ValEventKind::AboutToChange ? 'a' : 'c';
                                                text_ += std::to_string(static_cast<int>(event.change)) + ' ';
                                            }};
    Listener<ValServerEvent<EffectValParamFnType>> type_{
        param_.fnTypeServer().notifier(), [this](const auto&) {
            text_ += "type ";
            EXPECT_EQ(param_.graph()->empty(), param_.functionType() == kConstant) << "type and graph agree";
        }};
    Listener<Graph1dBase::Event> graph_{param_.graph()->changes(), [this](const auto&) { text_ += "graph "; }};
};

ListParam<int> threeItems(int selected)
{
    return ListParam<int>({{10, L"ten"}, {20, L"twenty"}, {30, L"thirty"}}, selected);
}

} // namespace

TEST(Param, ConstantIsClampedComparedAnnouncedStoredAndTold)
{
    EffectValParam<double> param(ParamInfo{}, 7.0, 1.0, 0.0);
    EXPECT_EQ(param.getMin(), 0.0) << "swapped ends of a range are put right";
    EXPECT_EQ(param.constant(), 1.0) << "the default is brought into the range";
    Log log(param);
    EXPECT_TRUE(param.setConstant(0.5, ChangeKind::Start));
    EXPECT_EQ(log.take(), "a0 c0 ");
    EXPECT_TRUE(param.setConstant(-3.0, ChangeKind::Continuation));
    EXPECT_EQ(log.take(), "c4 ") << "the continuation of a change is not announced";
    EXPECT_EQ(param.constant(), 0.0);
    EXPECT_TRUE(param.setConstant(-8.0));
    EXPECT_FALSE(param.setConstant(kNoNumber));
    EXPECT_FALSE(param.setConstantValue(ParamValue(true)));
    EXPECT_EQ(log.take(), "");
    EXPECT_TRUE(param.constantServer().set(2.0)) << "the server is no way round the range";
    EXPECT_EQ(param.constant(), 1.0);
    EXPECT_EQ(log.take(), "a3 c3 ");
}

TEST(Param, BecomesAnimatedAndConstantAgainWithoutAJump)
{
    EffectValParam<double> param(ParamInfo{}, 0.25, 0.0, 1.0);
    Log log(param);
    EXPECT_EQ(param.addKeyframeAt(0.5, 0.5), -1) << "an edit never makes a constant animated";
    ASSERT_TRUE(param.setFunctionType(kKeyframed, 0.3));
    EXPECT_EQ(log.take(), "type graph ");
    EXPECT_EQ(param.graph()->keyframes(), (std::vector<Keyframe>{key(0.3, 0.25)}));
    EXPECT_EQ(param.addKeyframeAt(0.8, 7.0), 1);
    EXPECT_EQ(param.addKeyframeAt(0.8, 0.5), -1);
    EXPECT_EQ(param.addKeyframeAt(0.9, kNoNumber), -1);
    EXPECT_EQ(param.getValue(0.8), 1.0) << "clamped";
    EXPECT_TRUE(param.setKeyframeValueAt(1, 0.75));
    EXPECT_FALSE(param.setKeyframeValueAt(2, 0.75));
    EXPECT_EQ(log.take(), "graph graph ");
    EXPECT_TRUE(param.setFunctionType(kKeyframed, 0.9));
    EXPECT_FALSE(param.setFunctionType(kConstant, kNoNumber));
    EXPECT_FALSE(param.setFunctionType(static_cast<EffectValParamFnType>(2), 0.5));
    EXPECT_EQ(log.take(), "");
    ASSERT_TRUE(param.setFunctionType(kConstant, 0.55));
    EXPECT_NEAR(param.constant(), 0.5, 1e-12);
    EXPECT_EQ(param.getValue(0.0), param.constant());
    EXPECT_EQ(log.take(), "c3 type graph ");

    EXPECT_TRUE(param.fnTypeServer().set(kKeyframed));
    EXPECT_EQ(param.graph()->timeAt(0), 0.0) << "asked of the server: at the start";
    EXPECT_TRUE(param.graph()->removeKeyframe(0));
    EXPECT_NEAR(param.getValue(0.5), 0.5, 1e-12) << "animated without keyframes: the constant";
}

TEST(Param, ALongHandleDoesNotLeadOutOfTheRange)
{
    EffectValParam<double> param(ParamInfo{}, 1.0, 0.0, 1.0);
    param.setFunctionType(kKeyframed, 0.0);
    param.addKeyframeAt(1.0, 1.0);
    Keyframe up = smooth(0.0, 1.0);
    up.out = {0.3, 5.0, false};
    ASSERT_TRUE(param.graph()->channel(0).setKeyframe(0, up));
    EXPECT_GT(param.graph()->curve(0).evaluate(0.3), 1.0);
    EXPECT_EQ(param.getValue(0.3), 1.0);
}

TEST(Param, ComponentsAreClampedAndAnimatedEachInItsRange)
{
    EffectValParam<Vector2d> point(ParamInfo{}, {0.5, 0.5}, {0.0, -1.0}, {1.0, 2.0});
    EXPECT_TRUE(point.setConstant({3.0, -3.0}));
    EXPECT_EQ(point.constant(), (Vector2d{1.0, -1.0}));
    EXPECT_FALSE(point.setConstant({0.5, kNoNumber}));
    point.setFunctionType(kKeyframed, 0.0);
    EXPECT_EQ(point.addKeyframeAt(1.0, {0.0, 5.0}), 1);
    EXPECT_EQ(point.getValue(0.5), (Vector2d{0.5, 0.5}));

    EffectValParam<ColourData> colour(ParamInfo{}, ColourData{{0.1, 0.2, 0.3, 1.0}});
    colour.setFunctionType(kKeyframed, 0.5);
    EXPECT_EQ(colour.getValue(0.9), (ColourData{{0.1, 0.2, 0.3, 1.0}}));
    EffectValParam<Angle> angle(ParamInfo{}, Angle{725.0});
    EXPECT_EQ(angle.getValue(0.0), Angle{725.0}) << "whole turns are kept";
}

TEST(Param, ValuesWithoutNumbersAreConstant)
{
    EffectValParam<bool> toggle(ParamInfo{}, true);
    EXPECT_FALSE(toggle.isKeyframable());
    EXPECT_FALSE(toggle.setFunctionType(kKeyframed, 0.0));
    EXPECT_FALSE(toggle.fnTypeServer().set(kKeyframed));
    EXPECT_EQ(toggle.functionType(), kConstant);

    EffectValParam<ListParam<int>> list(ParamInfo{}, threeItems(1));
    EXPECT_TRUE(list.setConstant(threeItems(2)));
    EXPECT_EQ(list.getValue(0.3).selectedItem()->value, 30);
    EXPECT_EQ(std::get<ListParam<int>>(list.defaultValue()).selectedIndex(), 1);

    ParamInfo info;
    info.keyframable = false;
    EffectValParam<double> fixed(info, 0.5);
    EXPECT_EQ(fixed.graph(), nullptr);
    EXPECT_FALSE(fixed.setFunctionType(kKeyframed, 0.0));
    EXPECT_EQ(fixed.addKeyframeAt(0.1, 0.2), -1);
}

TEST(Param, AVisitorGetsEachTypeAsWhatItIs)
{
    const auto visited = [](EffectValParamBase& param) {
        ParamValue seen;
        visitParam(param, [&](auto& typed) { seen = typed.constant(); });
        return seen == param.constantValue() ? static_cast<int>(seen.index()) : -1;
    };
    std::vector<Kt::Ptr<EffectValParamBase>> all;
#define ORIBUND_MAKE(P, with) all.push_back(Kt::makePtr<EffectValParam<P>>(ParamInfo{}, P()));
    ORIBUND_FOR_PARAM_TYPES(ORIBUND_MAKE, )
#undef ORIBUND_MAKE
    for (std::size_t i = 0; i < all.size(); ++i) {
        EXPECT_EQ(visited(*all[i]), static_cast<int>(i));
        EXPECT_TRUE(all[i]->setConstantValue(all[i]->defaultValue()));
        EXPECT_FALSE(all[i]->setConstantValue(all[(i + 1) % all.size()]->defaultValue())) << "another type's value";
    }
}
