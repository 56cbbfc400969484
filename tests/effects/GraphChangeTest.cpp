#include "oribund/host/effects/curves/MultiGraph.h"
#include "tests/effects/CurveSupport.h"
#include "tests/support/Listener.h"

#include <gtest/gtest.h>

#include <memory>

using namespace oribund;
using namespace oribund::test;

namespace
{

using Heard = Listener<Graph1dBase::Event>;

} // namespace

TEST(GraphChange, EachEditIsToldOnceAndNothingIfNothingChanged)
{
    BezierCurve curve;
    Heard listener(curve.changes());
    ASSERT_EQ(curve.addKeyframe(0.5, ChangeKind::Start), 0);
    ASSERT_EQ(curve.addKeyframe(0.7), 1);
    ASSERT_TRUE(curve.setKeyframeValue(0, 2.0, ChangeKind::Continuation));
    ASSERT_EQ(curve.moveKeyframe(0, 0.6), 0);
    ASSERT_TRUE(curve.setKeyframeType(0, KeyframeType::Smooth));
    ASSERT_TRUE(curve.removeKeyframe(1));
    ASSERT_EQ(listener.heard.size(), 6u);
    EXPECT_EQ(listener.heard[0].value.kind, ChangeKind::Start);
    EXPECT_EQ(listener.heard[0].value.reason, BatchReason::EndAddKeyframe);
    EXPECT_EQ(listener.heard[0].value.graph, &curve);
    EXPECT_EQ(listener.heard[2].value.kind, ChangeKind::Continuation);
    EXPECT_EQ(listener.heard[3].value.reason, BatchReason::Move);

    EXPECT_TRUE(curve.setKeyframeValue(0, 2.0));
    EXPECT_EQ(curve.moveKeyframe(0, 0.6), 0);
    EXPECT_TRUE(curve.setKeyframeType(0, KeyframeType::Smooth));
    EXPECT_TRUE(curve.setKeyframe(0, curve.keyframe(0)));
    EXPECT_TRUE(fill(curve, curve.keyframes()));
    EXPECT_FALSE(curve.removeKeyframe(1));
    EXPECT_EQ(listener.heard.size(), 6u);
    EXPECT_TRUE(curve.removeAllKeyframes());
    EXPECT_TRUE(curve.removeAllKeyframes());
    EXPECT_EQ(listener.heard.size(), 7u);
}

TEST(GraphChange, ABatchIsOneChangeHoweverDeep)
{
    BezierCurve curve;
    Heard listener(curve.changes());
    curve.startBatch(kAllChannels, BatchReason::AddKeyframe, ChangeKind::Start);
    curve.addKeyframe(0.5);
    curve.startBatch(kAllChannels, BatchReason::SetValue, ChangeKind::Single);
    curve.setKeyframeValue(0, 3.0);
    curve.endBatch(kAllChannels, BatchReason::SetValue);
    EXPECT_TRUE(curve.inBatch());
    EXPECT_TRUE(listener.heard.empty());
    curve.endBatch(kAllChannels, BatchReason::EndAddKeyframe);
    ASSERT_EQ(listener.heard.size(), 1u);
    EXPECT_EQ(listener.heard[0].value.kind, ChangeKind::Start);
    EXPECT_EQ(listener.heard[0].value.reason, BatchReason::EndAddKeyframe);
    EXPECT_EQ(listener.heard[0].value.channels, 1u);
    curve.endBatch(kAllChannels, BatchReason::SetValue);
    EXPECT_EQ(listener.heard.size(), 1u) << "an end without a start means nothing";
    EXPECT_FALSE(curve.inBatch());
}

TEST(GraphChange, ChannelsAndTheWholeHearWhenAllChannelsHaveChanged)
{
    MultiGraph<4> graph;
    Heard whole(graph.changes());
    Heard second(graph.channel(1).changes());
    Heard third(graph.channel(2).changes());
    second.then = [&](const auto&) {
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(graph.channel(i).size(), 1) << "in step whenever anybody looks";
            EXPECT_EQ(graph.channel(i).valueAt(0), i);
        }
    };
    const std::array<double, 4> values{0.0, 1.0, 2.0, 3.0};
    ASSERT_EQ(graph.addKeyframeWithValues(0.5, values), 0);
    ASSERT_EQ(second.heard.size(), 1u);
    EXPECT_EQ(second.heard[0].value.graph, &graph.channel(1));
    EXPECT_EQ(second.heard[0].value.channels, 1u);
    ASSERT_EQ(whole.heard.size(), 1u);
    EXPECT_EQ(whole.heard[0].value.graph, &graph);
    EXPECT_EQ(whole.heard[0].value.channels, 0xFu);

    second.then = [](const auto&) {};
    ASSERT_TRUE(graph.channel(1).setKeyframeValue(0, 7.0));
    ASSERT_TRUE(graph.setKeyframeValues(0, std::array{0.0, 7.0, 9.0, 3.0}));
    EXPECT_EQ(second.heard.size(), 2u);
    EXPECT_EQ(third.heard.size(), 2u);
    ASSERT_EQ(whole.heard.size(), 3u);
    EXPECT_EQ(whole.heard[1].value.channels, 0x2u);
    EXPECT_EQ(whole.heard[2].value.channels, 0x4u) << "of a batch, the channels that did change";

    ASSERT_EQ(graph.channel(3).addKeyframe(0.8), 1) << "a channel's times are everybody's";
    ASSERT_EQ(graph.channel(0).moveKeyframe(0, 0.9), 1);
    EXPECT_EQ(graph.curve(2).timeAt(1), 0.9);
    ASSERT_TRUE(graph.channel(2).removeKeyframe(0));
    EXPECT_EQ(graph.curve(0).size(), 1);
    EXPECT_EQ(whole.heard.size(), 6u);
    graph.channel(0).startBatch(kAllChannels, BatchReason::SetValue, ChangeKind::Single);
    graph.channel(1).setKeyframeValue(0, 0.5);
    EXPECT_EQ(whole.heard.size(), 6u) << "a channel's batch holds back the whole graph";
    graph.channel(0).endBatch(kAllChannels, BatchReason::SetValue);
    EXPECT_EQ(whole.heard.size(), 7u);
}

TEST(GraphChange, ObserversMayEndTheGraph)
{
    auto graph = std::make_unique<MultiGraph<2>>();
    Heard channel(graph->channel(0).changes());
    Heard other(graph->channel(1).changes());
    Heard whole(graph->changes());
    channel.then = [&](const auto&) { graph.reset(); };
    ASSERT_EQ(graph->addKeyframe(0.5), 0);
    EXPECT_EQ(graph, nullptr);
    for (const Heard* one : {&other, &whole}) {
        ASSERT_EQ(one->count(), 1u);
        EXPECT_EQ(one->heard[0].kind, ValEventKind::ServerGone);
    }

    // From within a change that an observer of a change has made.
    auto curve = std::make_unique<BezierCurve>();
    Heard nested(curve->changes());
    nested.then = [&](const auto&) {
        if (curve && curve->size() == 1)
            curve->addKeyframe(0.7);
        else
            curve.reset();
    };
    EXPECT_EQ(curve->addKeyframe(0.5), 0);
    EXPECT_EQ(curve, nullptr);
    EXPECT_EQ(nested.heard.back().kind, ValEventKind::ServerGone);
}
