#include "oribund/host/base/Numeric.h"
#include "tests/effects/CurveSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

using namespace oribund;
using namespace oribund::test;

namespace
{

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/** What a curve is, in the plainest terms. */
struct Model {
    std::vector<Keyframe> keys;

    bool isFree(double time, int except = -1) const
    {
        for (int i = 0; i < static_cast<int>(keys.size()); ++i) {
            if (i != except && std::abs(keys[i].time - time) <= 1e-9)
                return false;
        }
        return true;
    }

    int insert(const Keyframe& keyframe)
    {
        const auto at = std::find_if(keys.begin(), keys.end(), [&](const auto& k) { return k.time > keyframe.time; });
        const auto index = at - keys.begin();
        keys.insert(at, keyframe);
        return static_cast<int>(index);
    }
};

void expectSame(const BezierCurve& curve, const Model& model)
{
    ASSERT_EQ(curve.keyframes(), model.keys);
    for (int i = 0; i < curve.size(); ++i) {
        ASSERT_EQ(curve.keyframe(i), model.keys[i]) << i;
        ASSERT_EQ(curve.indexAt(model.keys[i].time), i);
        ASSERT_EQ(curve.lowerIndex(model.keys[i].time), i);
    }
}

/** Moves some keyframes on either side of each other, which now and then would put them on or past one another. */
void retimeBoth(BezierCurve& curve, Model& model, Random& random, int grid)
{
    const double step = random.index(3) - 1.0 + random.real(-0.2, 0.2);
    const double share = random.real(0.0, 1.0);
    std::vector<int> indices;
    std::vector<double> times;
    std::vector<Keyframe> moved = model.keys;
    for (int i = random.index(curve.size()); i < curve.size(); ++i) {
        if (random.chance(share)) {
            moved[i].time += step / grid;
            indices.push_back(i);
            times.push_back(moved[i].time);
        }
    }
    const bool ascends = std::adjacent_find(moved.begin(), moved.end(), [](const auto& a, const auto& b) {
                             return !(b.time - a.time > kValueTolerance);
                         }) == moved.end();
    ASSERT_EQ(curve.setKeyframeTimes(indices, times), ascends);
    if (ascends)
        model.keys = moved;
}

/** One random edit of both, with times on a grid so that many meet. */
void editBoth(BezierCurve& curve, Model& model, Random& random, double growth, int grid)
{
    const int size = curve.size();
    const double time = random.index(grid) / static_cast<double>(grid);
    if (size == 0 || random.chance(growth)) {
        const Keyframe made = random.keyframe(time);
        const int index = curve.addKeyframe(time);
        ASSERT_EQ(index >= 0, model.isFree(time));
        if (index >= 0) {
            ASSERT_EQ(index, model.insert(made));
            ASSERT_TRUE(curve.setKeyframe(index, made));
        }
        return;
    }
    const int index = random.index(size);
    switch (random.index(5)) {
    case 0:
        ASSERT_TRUE(curve.removeKeyframe(index));
        model.keys.erase(model.keys.begin() + index);
        break;
    case 1: {
        const int moved = curve.moveKeyframe(index, time);
        ASSERT_EQ(moved >= 0, model.isFree(time, index));
        if (moved >= 0) {
            Keyframe keyframe = model.keys[index];
            keyframe.time = time;
            model.keys.erase(model.keys.begin() + index);
            ASSERT_EQ(moved, model.insert(keyframe));
        }
        break;
    }
    case 2:
        retimeBoth(curve, model, random, grid);
        break;
    case 3:
        model.keys[index].value = random.real(-1.0, 1.0);
        ASSERT_TRUE(curve.setKeyframeValue(index, model.keys[index].value));
        break;
    default:
        model.keys[index].type = random.chance(0.5) ? KeyframeType::Smooth : KeyframeType::Linear;
        ASSERT_TRUE(curve.setKeyframeType(index, model.keys[index].type));
    }
}

} // namespace

TEST(CurveModel, RandomEditsLeaveWhatASortedListHolds)
{
    // Few keyframes that meet all the time, then enough to split chunks and join them again.
    for (const int grid : {12, 20000}) {
        Random random(static_cast<unsigned>(grid));
        BezierCurve curve;
        Model model;
        for (const double growth : {0.9, 0.1, 0.7, 0.05}) {
            for (int i = 0; i < 2500; ++i) {
                ASSERT_NO_FATAL_FAILURE(editBoth(curve, model, random, growth, grid));
                ASSERT_EQ(curve.size(), static_cast<int>(model.keys.size()));
            }
            ASSERT_NO_FATAL_FAILURE(expectSame(curve, model));
            // Tangents that follow their neighbours have followed them through all of it.
            BezierCurve fresh;
            ASSERT_TRUE(fill(fresh, model.keys));
            for (int i = 0; i < 500; ++i) {
                const double time = random.real(-0.1, 1.1);
                ASSERT_EQ(curve.evaluate(time), fresh.evaluate(time)) << time;
            }
        }
    }
}

TEST(CurveModel, FindsKeyframesByTime)
{
    BezierCurve curve;
    EXPECT_EQ(curve.lowerIndex(0.5), -1);
    EXPECT_EQ(curve.nearestIndex(0.5), -1);
    curve.setRestValue(0.75);
    EXPECT_EQ(curve.evaluate(0.5), 0.75) << "without keyframes";

    ASSERT_TRUE(fill(curve, {key(0.0, 1.0), key(0.5, 2.0), key(1.0, 4.0)}));
    EXPECT_EQ(curve.indexAt(0.5 + 9e-10), 1);
    EXPECT_EQ(curve.indexAt(0.5 - 9e-10), 1);
    EXPECT_EQ(curve.indexAt(0.5 + 2e-9), -1);
    EXPECT_EQ(curve.lowerIndex(-0.1), -1);
    EXPECT_EQ(curve.lowerIndex(0.7), 1);
    EXPECT_EQ(curve.nearestIndex(-3.0), 0);
    EXPECT_EQ(curve.nearestIndex(0.25), 0) << "the earlier of two";
    EXPECT_EQ(curve.nearestIndex(0.2500001), 1);
    EXPECT_EQ(curve.nearestIndex(7.0), 2);
    EXPECT_EQ(curve.evaluate(-5.0), 1.0);
    EXPECT_EQ(curve.evaluate(5.0), 4.0);
    EXPECT_EQ(curve.evaluate(-kInfinity), 1.0);
    EXPECT_EQ(curve.evaluate(kInfinity), 4.0);
}

TEST(CurveModel, RefusesWhatNoCurveCanHold)
{
    BezierCurve curve;
    const std::vector<Keyframe> before{key(0.0, 1.0), smooth(0.5, 2.0)};
    ASSERT_TRUE(fill(curve, before));
    for (const double bad : {kNaN, kInfinity, -kInfinity, 1e200}) {
        EXPECT_EQ(curve.addKeyframe(bad), -1);
        EXPECT_EQ(curve.subdivide(bad), -1);
        EXPECT_EQ(curve.moveKeyframe(0, bad), -1);
        EXPECT_FALSE(curve.setKeyframeTimes(std::array{0, 1}, std::array{0.1, bad}));
        EXPECT_FALSE(curve.setKeyframeValue(0, bad));
        EXPECT_FALSE(curve.setKeyframe(0, key(bad, 1.0)));
        EXPECT_FALSE(curve.setKeyframe(0, key(0.1, bad)));
        EXPECT_FALSE(fill(curve, {key(0.0, 0.0), key(bad, 0.0)}));
        Keyframe handles = key(0.0, 1.0);
        handles.out = {0.1, bad, false};
        EXPECT_FALSE(curve.setKeyframe(0, handles));
        handles.out = {bad, 0.1, false};
        EXPECT_FALSE(curve.setKeyframe(0, handles));
    }
    Keyframe backwards = key(0.0, 1.0);
    backwards.in = {0.1, 0.0, false};
    EXPECT_FALSE(curve.setKeyframe(0, backwards));
    backwards.in = {};
    backwards.out = {-0.1, 0.0, false};
    EXPECT_FALSE(curve.setKeyframe(0, backwards));
    for (const int index : {-1, 2, 1000000}) {
        EXPECT_FALSE(curve.removeKeyframe(index));
        EXPECT_FALSE(curve.setKeyframeValue(index, 0.0));
        EXPECT_FALSE(curve.setKeyframeType(index, KeyframeType::Linear));
        EXPECT_FALSE(curve.setKeyframe(index, key(0.7, 0.0)));
        EXPECT_EQ(curve.moveKeyframe(index, 0.7), -1);
        EXPECT_FALSE(curve.setKeyframeTimes(std::array{0, index}, std::array{-0.1, 0.7}));
    }
    EXPECT_FALSE(curve.setKeyframeTimes(std::array{0, 1}, std::array{0.1}));
    EXPECT_FALSE(curve.setKeyframeTimes(std::array{1, 0}, std::array{0.6, 0.1}));
    EXPECT_FALSE(BezierCurve().setKeyframeTimes(std::array{0}, std::array{0.1}));
    EXPECT_EQ(curve.addKeyframe(0.5 + 1e-10), -1);
    EXPECT_EQ(curve.subdivide(0.5), -1);
    EXPECT_FALSE(curve.setKeyframe(0, key(0.5, 1.0)));
    EXPECT_FALSE(fill(curve, {key(0.2, 0.0), key(0.1, 0.0)}));
    EXPECT_FALSE(fill(curve, {key(0.1, 0.0), key(0.1 + 1e-10, 0.0)}));
    EXPECT_EQ(curve.keyframes(), before);
}
