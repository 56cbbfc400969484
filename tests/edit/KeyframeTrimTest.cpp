#include "tests/edit/KeyframesFixture.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace oribund::test
{
namespace
{

constexpr double kFrame = 0.04;

TEST_F(Keyframes, AreTrimmedInWholeFramesThatAddUp)
{
    const auto effect = addEffect(1);
    const auto a = addParam(effect, "a", {0.1, 0.5, 0.9});
    select(effect, *a, 0.5);
    heard.clear();
    EXPECT_FALSE(vob.monitor->trimSelectedKeyframes(track, 0.015)) << "less than half a frame";
    EXPECT_TRUE(vob.monitor->trimSelectedKeyframes(track, 0.015));
    EXPECT_DOUBLE_EQ(a->graph()->timeAt(1), 0.504);
    EXPECT_EQ(heard.size(), 1u);
    EXPECT_EQ(heard[0].code, EffectChangeCode::KeyframesMoved);
    EXPECT_TRUE(vob.monitor->keyframeSelection().contains(effect->id(), a->id(), 0.504));

    EXPECT_TRUE(vob.monitor->trimSelectedKeyframes(track, 100.0));
    EXPECT_DOUBLE_EQ(a->graph()->timeAt(1), 0.896) << "a frame from the one that stays";
    EXPECT_FALSE(vob.monitor->trimSelectedKeyframes(track, -90.0)) << "the way back over what was refused";
    EXPECT_TRUE(vob.monitor->trimSelectedKeyframes(track, -10.03));
    EXPECT_EQ(a->graph()->timeAt(1), 0.5) << "exactly where it was";
    vob.monitor->endTrim();
    EXPECT_FALSE(vob.monitor->trimSelectedKeyframes(track, std::nan("")));
    vob.monitor->endTrim();

    a->graph()->moveKeyframe(2, 0.6013);
    tellOf(effect);
    EXPECT_TRUE(vob.monitor->trimSelectedKeyframes(track, 100.0));
    EXPECT_DOUBLE_EQ(a->graph()->timeAt(1), 0.596) << "on a frame, though the next one is off";
    EXPECT_FALSE(vob.monitor->trimSelectedKeyframes(track, 1e300)) << "not by the 17th digit either";
    vob.monitor->endTrim();
}

/** Moves random keyframes about and looks at each rule after each move. */
TEST_F(Keyframes, KeepOrderDistanceAndCompanyThroughAnyTrim)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<double> anywhere(-0.1, 1.1);
    std::uniform_real_distribution<double> by(-3.0, 3.0);
    for (int round = 0; round < 200; ++round) {
        selectAll(false);
        vob.monitor->effects.clear();
        const std::vector effects{addEffect(2 * round + 1, 0.0, 10.0), addEffect(2 * round + 2, 5.0, 7.0)};
        std::vector<Number> params;
        for (const auto& effect : effects) {
            params.push_back(addParam(effect, "a", {0.5}));
            for (int i = 0; i < 12; ++i)
                params.back()->graph()->addKeyframe(anywhere(random));
            tellOf(effect);
        }
        for (std::size_t e = 0; e < 2; ++e)
            for (const double time : timesOf(*params[e]))
                if (random() % 3 == 0)
                    select(effects[e], *params[e], time);
        const KeyframeSelection start = vob.monitor->keyframeSelection();
        const std::vector before{timesOf(*params[0]), timesOf(*params[1])};

        for (int move = 0; move < 5; ++move) {
            vob.monitor->trimSelectedKeyframes(track, by(random));
            double shift = std::nan("");
            for (std::size_t e = 0; e < 2; ++e) {
                const double length = e == 0 ? 10.0 : 2.0;
                const std::vector<double> now = timesOf(*params[e]);
                ASSERT_EQ(now.size(), before[e].size());
                const auto moves = [&](std::size_t i) {
                    return start.contains(effects[e]->id(), params[e]->id(), before[e][i]);
                };
                for (std::size_t i = 0; i < now.size(); ++i) {
                    if (!moves(i)) {
                        ASSERT_EQ(now[i], before[e][i]);
                    } else {
                        const double own = (now[i] - before[e][i]) * length;
                        shift = std::isnan(shift) ? own : shift;
                        ASSERT_NEAR(own, shift, 1e-9) << "all by the same";
                        ASSERT_GE(now[i], 0.0);
                        ASSERT_LE(now[i], 1.0);
                    }
                    if (i > 0 && moves(i) != moves(i - 1)) {
                        const double least = std::min(kFrame, (before[e][i] - before[e][i - 1]) * length);
                        ASSERT_GE((now[i] - now[i - 1]) * length, least - 1e-9);
                    }
                }
            }
        }
        if (round % 2 == 0) {
            vob.monitor->cancelTrim();
            EXPECT_EQ(timesOf(*params[0]), before[0]);
            EXPECT_EQ(timesOf(*params[1]), before[1]);
            EXPECT_EQ(vob.monitor->keyframeSelection(), start);
        }
        vob.monitor->endTrim();
    }
}

TEST_F(Keyframes, TrimGoesOnWithoutWhatIsLostMeanwhile)
{
    const auto effect = addEffect(1);
    const auto other = addEffect(2);
    const auto a = addParam(effect, "a", {0.1, 0.2, 0.8});
    const auto b = addParam(effect, "b", {0.1});
    const auto c = addParam(other, "c", {0.3});
    setOf(effect);
    selectAll();
    EXPECT_TRUE(vob.monitor->trimSelectedKeyframes(track, 0.1));
    a->graph()->removeKeyframe(0);
    b->setFunctionType(EffectValParamFnType::Constant, 0.0);
    tellOf(effect);
    EXPECT_TRUE(vob.monitor->trimSelectedKeyframes(track, 0.1));
    EXPECT_NEAR(a->graph()->timeAt(0), 0.22, 1e-9);
    EXPECT_EQ(b->graph()->size(), 0);

    vob.monitor->effects.pop_back();
    vob.monitor->tell(EffectChangeCode::ParamSetChanged, other->id());
    EXPECT_TRUE(vob.monitor->trimSelectedKeyframes(track, 0.1));
    EXPECT_NEAR(c->graph()->timeAt(0), 0.32, 1e-9) << "it is not of the edit any more";
    effect->removeParam(a->id());
    vob.monitor->tell(EffectChangeCode::ParamSetChanged, effect->id());
    EXPECT_FALSE(vob.monitor->trimSelectedKeyframes(track, 0.1));
    vob.monitor->cancelTrim();
}

} // namespace
} // namespace oribund::test
