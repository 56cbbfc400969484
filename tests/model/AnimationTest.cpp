// Animation belongs to the pictures, whatever is cut off, added or moved.
#include "tests/effects/CurveSupport.h"
#include "tests/support/SampleEdit.h"

#include <gtest/gtest.h>

#include <map>

using namespace sample;
using oribund::BezierCurve;
using oribund::test::Random;

namespace
{
constexpr int kIn = 300;
constexpr int kLength = 60;
constexpr int kAround = 200; // frames before and after the segment, for what a trim brings to light

/** The values of all animated parameters of a segment's effects, channel by channel, at a frame of it. */
std::vector<double> valuesAt(const SegmentData& segment, int frame)
{
    std::vector<double> values;
    for (const EffectData& effect : segment.effects)
        for (const ParamData& param : effect.params)
            for (const ChannelData& channel : param.channels) {
                BezierCurve curve;
                EXPECT_TRUE(curve.setKeyframes({&channel, 1}));
                values.push_back(curve.evaluate(static_cast<double>(frame) / segment.length));
            }
    return values;
}

/** A segment with an effect that is animated at random, and one that the catalogue does not know. */
struct Animated : Bench {
    explicit Animated(unsigned seed)
        : random(seed)
    {
        whole = addPicture(1000, kLength, kIn);
        const ObjectId tint = editor.addEffect(whole, "tint").object;
        for (const TintParam index : {kLevel, kColour, kCentre, kTurn})
            animate(*timeline().findEffect(tint)->paramAt(index));
        ParamData unknown{"secret", 1.0, true, {random.keyframes(7)}};
        editor.addEffect(whole, EffectData{0, "gone", true, {unknown}, {}});
        undo().endGesture();
        for (int frame = -kAround; frame < kLength + kAround; ++frame)
            wanted[kIn + frame] = valuesAt(timeline().dataOf(*timeline().findSegment(whole)), frame);
    }

    /** Keyframes that begin before the segment or in it, and end in it or after it; every other time at frames of it
        and halfway between them. */
    void animate(oribund::EffectValParamBase& param)
    {
        const double first = random.real(-0.6, 0.2);
        const double last = random.real(0.8, 1.6);
        const bool onGrid = random.chance(0.5);
        std::vector<ChannelData> channels(static_cast<std::size_t>(param.graph()->channelCount()));
        for (const oribund::Keyframe& key : random.keyframes(2 + random.index(6))) {
            const double time = first + (last - first) * key.time;
            for (ChannelData& channel : channels)
                channel.push_back(random.keyframe(onGrid ? std::round(time * 2 * kLength) / (2 * kLength) : time));
        }
        param.setFunctionType(oribund::EffectValParamFnType::Keyframed, 0.0);
        EXPECT_TRUE(param.graph()->setKeyframes(channels));
    }

    /** Every frame of every segment has the values that its picture had at first. */
    void expectAsAtFirst()
    {
        for (const TrackData& track : edit->snapshot().tracks)
            for (const SegmentData& segment : track.segments)
                for (int frame = 0; frame < segment.length; ++frame) {
                    const std::vector<double> values = valuesAt(segment, frame);
                    const std::vector<double>& known = wanted.at(segment.in + frame);
                    ASSERT_EQ(values.size(), known.size());
                    for (std::size_t i = 0; i < values.size(); ++i)
                        ASSERT_NEAR(values[i], known[i], 1e-9) << "channel " << i << ", picture " << segment.in + frame;
                }
    }

    Random random;
    ObjectId whole = kNoObject;
    std::map<int, std::vector<double>> wanted; ///< by frame of the media
};

} // namespace

TEST(Animation, StaysAtItsPicturesThroughSplitsTrimsAndMoves)
{
    for (unsigned seed = 1; seed <= 30; ++seed) {
        SCOPED_TRACE(seed);
        Animated a(seed);
        std::vector<EditData> states{a.edit->snapshot()};
        const std::size_t first = a.undo().position();
        ObjectId right = kNoObject;
        const auto step = [&](const EditOutcome& outcome) {
            ASSERT_TRUE(outcome) << outcome.refused;
            ASSERT_NO_FATAL_FAILURE(a.expectAsAtFirst()) << "after step " << states.size();
            states.push_back(a.edit->snapshot());
            right = outcome.object;
        };
        ASSERT_NO_FATAL_FAILURE(step(a.editor.splitSegment(a.whole, 1020 + a.random.index(20))));
        const ObjectId second = right;
        ASSERT_NO_FATAL_FAILURE(step(a.editor.splitSegment(a.whole, 1001 + a.random.index(19))));
        const ObjectId middle = right;
        ASSERT_NO_FATAL_FAILURE(step(a.editor.splitSegment(second, 1045)));
        ASSERT_NO_FATAL_FAILURE(step(a.editor.removeSegment(right)));
        ASSERT_NO_FATAL_FAILURE(step(a.editor.trimEnd(second, 1042)));
        ASSERT_NO_FATAL_FAILURE(step(a.editor.moveSegment(second, kVideo, 3000)));
        ASSERT_NO_FATAL_FAILURE(step(a.editor.trimEnd(second, 3000 + 150)));
        ASSERT_NO_FATAL_FAILURE(step(a.editor.trimStart(second, 3000 - 150)));
        ASSERT_NO_FATAL_FAILURE(step(a.editor.removeSegment(middle)));
        ASSERT_NO_FATAL_FAILURE(step(a.editor.trimStart(a.whole, 1000 - 100)));
        ASSERT_NO_FATAL_FAILURE(step(a.editor.trimStart(a.whole, a.segment(a.whole).end() - 1)));
        ASSERT_NO_FATAL_FAILURE(step(a.editor.trimEnd(a.whole, a.segment(a.whole).start + kLength)));
        for (std::size_t i = states.size(); --i > 0;) {
            ASSERT_EQ(a.undo().position(), first + i);
            ASSERT_TRUE(a.undo().undo());
            ASSERT_EQ(a.edit->snapshot(), states[i - 1]);
        }
        for (std::size_t i = 1; i < states.size(); ++i) {
            ASSERT_TRUE(a.undo().redo());
            ASSERT_EQ(a.edit->snapshot(), states[i]);
        }
    }
}

TEST(Animation, AKeyframeIsAddedAtACutThatSomethingMovesAcross)
{
    Bench b;
    const ObjectId left = b.addPicture(0, 100);
    const ObjectId tint = b.editor.addEffect(left, "tint").object;
    const auto level = b.param<double>(tint, kLevel);
    const auto times = [&b](ObjectId segment, TintParam index) {
        std::vector<double> at;
        const Segment& where = *b.timeline().findSegment(segment);
        for (const auto& key : where.effects.front()->paramAt(index)->graph()->keyframes())
            at.push_back(key.time * where.data.length);
        return at;
    };
    level->setFunctionType(oribund::EffectValParamFnType::Keyframed, 0.2);
    level->addKeyframeAt(0.6, 80.0);
    const ObjectId right = b.editor.splitSegment(left, 50).object;
    EXPECT_EQ(times(left, kLevel), (std::vector<double>{20, 50, 60}));
    EXPECT_EQ(times(right, kLevel), (std::vector<double>{-30, 0, 10}));
    EXPECT_DOUBLE_EQ(level->getValue(1.0), 72.5);

    b.editor.splitSegment(right, 60);
    EXPECT_EQ(times(right, kLevel), (std::vector<double>{-30, 0, 10})) << "there was one";
    b.editor.splitSegment(left, 10);
    EXPECT_EQ(times(left, kLevel), (std::vector<double>{20, 50, 60})) << "nothing moves there";
}
