#include "oribund/host/effects/curves/MultiGraph.h"
#include "oribund/host/notify/MethodCallback.h"
#include "tests/effects/CurveSupport.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

using namespace oribund;
using namespace oribund::test;

namespace
{

/** Keeps what it is told, and then does what a test wants. */
class Listener
{
public:
    explicit Listener(Graph1dBase& graph) { callback_.attach(graph.changes()); }

    std::vector<Graph1dBase::Change> heard;
    bool ended = false;
    std::function<void()> then = [] {};

private:
    int hear(const Graph1dBase::Event& event)
    {
        if (event.kind == ValEventKind::ServerGone) {
            ended = true;
        } else {
            EXPECT_EQ(event.kind, ValEventKind::Changed);
            EXPECT_EQ(event.change, event.value->kind);
            heard.push_back(*event.value);
        }
        then();
        return 0;
    }

    MethodCallback<Listener, Graph1dBase::Event, int> callback_{this, &Listener::hear};
};

} // namespace

TEST(GraphChange, EachEditIsToldOnceAndNothingIfNothingChanged)
{
    BezierCurve curve;
    Listener listener(curve);
    ASSERT_EQ(curve.addKeyframe(0.5, ChangeKind::Start), 0);
    ASSERT_EQ(curve.addKeyframe(0.7), 1);
    ASSERT_TRUE(curve.setKeyframeValue(0, 2.0, ChangeKind::Continuation));
    ASSERT_EQ(curve.moveKeyframe(0, 0.6), 0);
    ASSERT_TRUE(curve.setKeyframeType(0, KeyframeType::Smooth));
    ASSERT_TRUE(curve.removeKeyframe(1));
    ASSERT_EQ(listener.heard.size(), 6u);
    EXPECT_EQ(listener.heard[0].kind, ChangeKind::Start);
    EXPECT_EQ(listener.heard[0].reason, BatchReason::EndAddKeyframe);
    EXPECT_EQ(listener.heard[0].graph, &curve);
    EXPECT_EQ(listener.heard[2].kind, ChangeKind::Continuation);
    EXPECT_EQ(listener.heard[3].reason, BatchReason::Move);

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
    Listener listener(curve);
    curve.startBatch(kAllChannels, BatchReason::AddKeyframe, ChangeKind::Start);
    curve.addKeyframe(0.5);
    curve.startBatch(kAllChannels, BatchReason::SetValue, ChangeKind::Single);
    curve.setKeyframeValue(0, 3.0);
    curve.endBatch(kAllChannels, BatchReason::SetValue);
    EXPECT_TRUE(curve.inBatch());
    EXPECT_TRUE(listener.heard.empty());
    curve.endBatch(kAllChannels, BatchReason::EndAddKeyframe);
    ASSERT_EQ(listener.heard.size(), 1u);
    EXPECT_EQ(listener.heard[0].kind, ChangeKind::Start);
    EXPECT_EQ(listener.heard[0].reason, BatchReason::EndAddKeyframe);
    EXPECT_EQ(listener.heard[0].channels, 1u);

    {
        const GraphBatch batch(curve, BatchReason::SetValue, BatchReason::SetValue, ChangeKind::Single);
        curve.setKeyframeValue(0, 3.0);
        curve.setKeyframeValue(5, 1.0);
    }
    curve.endBatch(kAllChannels, BatchReason::SetValue);
    EXPECT_EQ(listener.heard.size(), 1u) << "nothing changed, and an end without a start means nothing";
    EXPECT_FALSE(curve.inBatch());
}

TEST(GraphChange, ChannelsAndTheWholeHearWhenAllChannelsHaveChanged)
{
    MultiGraph<4> graph;
    Listener whole(graph);
    Listener second(graph.channel(1));
    Listener third(graph.channel(2));
    second.then = [&] {
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(graph.channel(i).size(), 1) << "in step whenever anybody looks";
            EXPECT_EQ(graph.channel(i).valueAt(0), i);
        }
    };
    const std::array<double, 4> values{0.0, 1.0, 2.0, 3.0};
    ASSERT_EQ(graph.addKeyframeWithValues(0.5, values), 0);
    ASSERT_EQ(second.heard.size(), 1u);
    EXPECT_EQ(second.heard[0].graph, &graph.channel(1));
    EXPECT_EQ(second.heard[0].channels, 1u);
    ASSERT_EQ(whole.heard.size(), 1u);
    EXPECT_EQ(whole.heard[0].graph, &graph);
    EXPECT_EQ(whole.heard[0].channels, 0xFu);

    second.then = [] {};
    ASSERT_TRUE(graph.channel(1).setKeyframeValue(0, 7.0));
    ASSERT_TRUE(graph.setKeyframeValues(0, std::array{0.0, 7.0, 9.0, 3.0}));
    EXPECT_EQ(second.heard.size(), 2u);
    EXPECT_EQ(third.heard.size(), 2u);
    ASSERT_EQ(whole.heard.size(), 3u);
    EXPECT_EQ(whole.heard[1].channels, 0x2u);
    EXPECT_EQ(whole.heard[2].channels, 0x4u) << "of a batch, the channels that did change";

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

TEST(GraphChange, ManyKeyframesMoveAsOneChangeOfAllChannels)
{
    MultiGraph<2> graph;
    for (const double time : {0.1, 0.2, 0.3, 0.4})
        graph.addKeyframeWithValues(time, std::array{time, -time});
    Keyframe shaped = graph.curve(1).keyframe(2);
    shaped.in = {-0.02, 0.5, false};
    graph.curve(1).setKeyframe(2, shaped);
    Listener whole(graph);
    Listener second(graph.channel(1));
    ASSERT_TRUE(graph.setKeyframeTimes(std::array{0, 2}, std::array{0.15, 0.25}, ChangeKind::Start));
    ASSERT_TRUE(graph.channel(1).setKeyframeTimes(std::array{0, 2}, std::array{0.16, 0.26}));
    ASSERT_TRUE(graph.setKeyframeTimes(std::array{0, 2}, std::array{0.16, 0.26}));
    ASSERT_TRUE(graph.setKeyframeTimes({}, {}));
    EXPECT_FALSE(graph.setKeyframeTimes(std::array{0, 2}, std::array{0.17, 0.4}));
    ASSERT_EQ(whole.heard.size(), 2u);
    EXPECT_EQ(whole.heard[0].reason, BatchReason::Move);
    EXPECT_EQ(whole.heard[0].kind, ChangeKind::Start);
    EXPECT_EQ(whole.heard[0].channels, 0x3u);
    EXPECT_EQ(second.heard.size(), 2u);
    shaped.time = 0.26;
    EXPECT_EQ(graph.curve(1).keyframe(2), shaped);
    EXPECT_EQ(graph.keyframes(0), (std::vector{key(0.16, 0.1), key(0.2, 0.2), key(0.26, 0.3), key(0.4, 0.4)}));
}

TEST(GraphChange, ObserversMayEditTheGraph)
{
    BezierCurve curve;
    Listener first(curve);
    Listener second(curve);
    first.then = [&] {
        if (curve.valueAt(0) < 3.0)
            curve.setKeyframeValue(0, curve.valueAt(0) + 1.0);
    };
    {
        const GraphBatch batch(curve, BatchReason::AddKeyframe, BatchReason::EndAddKeyframe, ChangeKind::Single);
        curve.addKeyframe(0.5);
    }
    EXPECT_EQ(curve.valueAt(0), 3.0);
    EXPECT_EQ(first.heard.size(), 4u);
    EXPECT_EQ(second.heard.size(), 4u) << "each edit is told to everybody";
    EXPECT_FALSE(curve.inBatch());
}

TEST(GraphChange, ObserversMayEndTheGraph)
{
    auto graph = std::make_unique<MultiGraph<2>>();
    Listener channel(graph->channel(0));
    Listener other(graph->channel(1));
    Listener whole(*graph);
    channel.then = [&] { graph.reset(); };
    ASSERT_EQ(graph->addKeyframe(0.5), 0);
    EXPECT_EQ(graph, nullptr);
    EXPECT_TRUE(whole.ended);
    EXPECT_TRUE(other.ended);
    EXPECT_TRUE(whole.heard.empty());

    // From within a change that an observer of a change has made.
    auto curve = std::make_unique<BezierCurve>();
    Listener nested(*curve);
    nested.then = [&] {
        if (curve && curve->size() == 1)
            curve->addKeyframe(0.7);
        else
            curve.reset();
    };
    EXPECT_EQ(curve->addKeyframe(0.5), 0);
    EXPECT_EQ(curve, nullptr);
    EXPECT_TRUE(nested.ended);
}
