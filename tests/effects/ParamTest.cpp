#include "oribund/host/effects/params/EffectValParam.h"
#include "tests/effects/CurveSupport.h"
#include "tests/support/Listener.h"

#include <gtest/gtest.h>

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
