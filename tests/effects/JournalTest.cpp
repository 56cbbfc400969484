#include "oribund/host/effects/params/EffectValParam.h"
#include "oribund/host/effects/params/iParamJournal.h"
#include "oribund/host/notify/MethodCallback.h"
#include "tests/effects/CurveSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

using namespace oribund;
using namespace oribund::test;

namespace
{

using Channels = std::vector<std::vector<Keyframe>>;

Channels channelsOf(const Graph1dBase& graph)
{
    Channels channels;
    for (int i = 0; i < graph.channelCount(); ++i)
        channels.push_back(graph.keyframes(i));
    return channels;
}

/** One elementary change; what is absent before was inserted, what is absent after was erased. */
struct Delta {
    int channel = 0;
    std::optional<Keyframe> keyBefore, keyAfter;
    std::optional<ParamValue> constantBefore, constantAfter;
    std::optional<EffectValParamFnType> typeBefore, typeAfter;
    Channels allBefore, allAfter;

    Delta inverse() const
    {
        return {channel,   keyAfter,   keyBefore, constantAfter, constantBefore,
                typeAfter, typeBefore, allAfter,  allBefore};
    }

    bool apply(EffectValParamBase& param) const
    {
        if (constantAfter)
            return param.restoreConstant(*constantAfter);
        if (typeAfter)
            return param.restoreFunctionType(*typeAfter);
        if (!allAfter.empty())
            return param.graph()->setKeyframes(allAfter);
        if (keyBefore && keyAfter)
            return param.restoreKeyframeChanged(channel, *keyAfter);
        return keyAfter ? param.restoreKeyframeInserted(channel, *keyAfter)
                        : param.restoreKeyframeErased(channel, keyBefore->time);
    }
};

class Recorder final : public iParamJournal
{
public:
    void constantChanged(EffectValParamBase&, const ParamValue& before, const ParamValue& after, ChangeKind) override
    {
        Delta delta;
        delta.constantBefore = before;
        delta.constantAfter = after;
        deltas.push_back(delta);
    }

    void keyframeInserted(EffectValParamBase&, int channel, const Keyframe& keyframe, ChangeKind) override
    {
        add(channel, {}, keyframe);
    }

    void keyframeErased(EffectValParamBase&, int channel, const Keyframe& keyframe, ChangeKind) override
    {
        add(channel, keyframe, {});
    }

    void keyframeChanged(EffectValParamBase&, int channel, const Keyframe& before, const Keyframe& after,
                         ChangeKind) override
    {
        add(channel, before, after);
    }

    void manyKeyframesChanging(EffectValParamBase& param, ChangeKind) override
    {
        EXPECT_TRUE(open);
        deltas.emplace_back().allBefore = channelsOf(*param.graph());
    }

    void manyKeyframesChanged(EffectValParamBase& param, ChangeKind) override
    {
        deltas.back().allAfter = channelsOf(*param.graph());
        EXPECT_NE(deltas.back().allAfter, deltas.back().allBefore);
    }

    void functionTypeChanged(EffectValParamBase&, EffectValParamFnType before, EffectValParamFnType after,
                             ChangeKind) override
    {
        Delta delta;
        delta.typeBefore = before;
        delta.typeAfter = after;
        deltas.push_back(delta);
    }

    void batchStarted(EffectValParamBase&, BatchReason, ChangeKind kind) override
    {
        EXPECT_FALSE(open);
        open = true;
        batchKind = kind;
    }

    void batchEnded(EffectValParamBase&, BatchReason, ChangeKind kind) override
    {
        EXPECT_TRUE(open);
        EXPECT_EQ(kind, batchKind);
        open = false;
    }

    std::vector<Delta> deltas;
    bool open = false;
    ChangeKind batchKind = ChangeKind::Single;

private:
    void add(int channel, std::optional<Keyframe> before, std::optional<Keyframe> after)
    {
        Delta delta;
        delta.channel = channel;
        delta.keyBefore = before;
        delta.keyAfter = after;
        deltas.push_back(delta);
    }
};

/** All that a parameter is. */
struct Snapshot {
    ParamValue constant;
    EffectValParamFnType type;
    Channels channels;

    explicit Snapshot(const EffectValParamBase& param)
        : constant(param.constantValue())
        , type(param.functionType())
        , channels(channelsOf(*param.graph()))
    {
    }

    bool operator==(const Snapshot&) const = default;
};

template <class P>
P randomValue(Random& random)
{
    std::array<double, ParamTraits<P>::kChannels> numbers;
    for (double& number : numbers)
        number = random.real(-0.5, 1.5);
    return ParamTraits<P>::join(numbers);
}

/** Some keyframes, by less than lies between two of them, most of the time. */
void moveSome(Graph1dBase& graph, Random& random)
{
    const double by = random.real(-0.03, 0.03);
    std::vector<int> indices;
    std::vector<double> times;
    for (int i = 0; i < graph.size(); ++i) {
        if (random.chance(0.3)) {
            indices.push_back(i);
            times.push_back(graph.timeAt(i) + by);
        }
    }
    graph.setKeyframeTimes(indices, times);
}

template <class P>
void randomEdit(EffectValParam<P>& param, Random& random)
{
    Graph1dBase& graph = *param.graph();
    const double time = random.index(40) / 40.0;
    const int index = random.index(std::max(graph.size(), 1));
    const int channel = random.index(graph.channelCount());
    switch (random.index(12)) {
    case 0:
        param.setConstant(randomValue<P>(random));
        break;
    case 1:
        param.setFunctionType(random.chance(0.2) ? EffectValParamFnType::Constant : EffectValParamFnType::Keyframed,
                              time);
        break;
    case 2:
        param.setKeyframeValueAt(index, randomValue<P>(random));
        break;
    case 3:
        graph.removeKeyframe(index);
        break;
    case 4:
        graph.moveKeyframe(index, time);
        break;
    case 5:
        graph.channel(channel).setKeyframe(index, random.keyframe(time));
        break;
    case 6:
        graph.subdivide(time);
        break;
    case 7: {
        const GraphBatch batch(graph, BatchReason::AddKeyframe, BatchReason::EndAddKeyframe, ChangeKind::Start);
        const int added = graph.addKeyframe(time);
        graph.channel(channel).setKeyframeValue(added, random.real(0.0, 1.0));
        break;
    }
    case 8:
        moveSome(graph, random);
        break;
    default:
        param.addKeyframeAt(time, randomValue<P>(random));
    }
}

template <class P>
void undoAndRedoRandomEdits(unsigned seed)
{
    Random random(seed);
    Recorder recorder;
    const P low = ParamTraits<P>::join({});
    EffectValParam<P> param(ParamInfo{}, low, low, randomValue<P>(random));
    param.setJournal(&recorder);

    std::vector<std::size_t> steps;
    std::vector<Snapshot> states{Snapshot(param)};
    for (int i = 0; i < 400; ++i) {
        randomEdit(param, random);
        EXPECT_FALSE(recorder.open);
        steps.push_back(recorder.deltas.size());
        states.emplace_back(param);
    }
    ASSERT_GT(recorder.deltas.size(), 300u);

    const std::vector<Delta> deltas = recorder.deltas;
    for (std::size_t step = steps.size(); step-- > 0;) {
        {
            const JournalSuspension suspension(param);
            for (std::size_t i = steps[step]; i-- > (step > 0 ? steps[step - 1] : 0);)
                ASSERT_TRUE(deltas[i].inverse().apply(param)) << "undoing " << i;
        }
        ASSERT_EQ(Snapshot(param), states[step]) << "before step " << step;
    }
    {
        const JournalSuspension suspension(param);
        for (const Delta& delta : deltas)
            ASSERT_TRUE(delta.apply(param));
    }
    EXPECT_EQ(Snapshot(param), states.back());
    EXPECT_EQ(recorder.deltas.size(), deltas.size()) << "undo and redo are not recorded";
}

class Counter
{
public:
    explicit Counter(Graph1dBase& graph) { callback_.attach(graph.changes()); }

    int count = 0;

private:
    int hear(const Graph1dBase::Event&) { return ++count; }

    MethodCallback<Counter, Graph1dBase::Event, int> callback_{this, &Counter::hear};
};

} // namespace

TEST(Journal, InverseDeltasLeadBackThroughEveryStateAndForwardAgain)
{
    for (unsigned seed = 1; seed <= 5; ++seed) {
        ASSERT_NO_FATAL_FAILURE(undoAndRedoRandomEdits<double>(seed));
        ASSERT_NO_FATAL_FAILURE(undoAndRedoRandomEdits<ColourData>(seed));
        ASSERT_NO_FATAL_FAILURE(undoAndRedoRandomEdits<Vector2d>(seed));
    }
}

TEST(Journal, HearsOfAChangeBeforeItsObservers)
{
    EffectValParam<double> param(ParamInfo{}, 0.0);
    Recorder recorder;
    param.setJournal(&recorder);

    struct Watcher {
        Recorder& recorder;
        std::size_t expected = 0;
        int calls = 0;

        int value(const ValServerEvent<double>& event)
        {
            if (event.kind == ValEventKind::Changed) {
                ++calls;
                EXPECT_EQ(recorder.deltas.size(), expected);
            }
            return 0;
        }

        int graph(const Graph1dBase::Event&)
        {
            ++calls;
            EXPECT_EQ(recorder.deltas.size(), expected);
            EXPECT_FALSE(recorder.open);
            return 0;
        }
    } watcher{recorder};

    MethodCallback<Watcher, ValServerEvent<double>, int> onValue(&watcher, &Watcher::value);
    MethodCallback<Watcher, Graph1dBase::Event, int> onGraph(&watcher, &Watcher::graph);
    onValue.attach(param.constantServer().notifier());
    onGraph.attach(param.graph()->changes());

    watcher.expected = 1;
    param.setConstant(0.5);
    watcher.expected = 3;
    param.setFunctionType(EffectValParamFnType::Keyframed, 0.2);
    watcher.expected = 4;
    param.setKeyframeValueAt(0, 0.7);
    EXPECT_EQ(watcher.calls, 3);
    EXPECT_EQ(recorder.deltas[0].constantBefore, ParamValue(0.0));
    EXPECT_EQ(recorder.deltas[0].constantAfter, ParamValue(0.5));
    EXPECT_EQ(recorder.deltas[3].keyBefore, key(0.2, 0.5));
    EXPECT_EQ(recorder.deltas[3].keyAfter, key(0.2, 0.7));
}

TEST(Journal, RestoringIsOneChangeAndRefusesWhatDoesNotFit)
{
    EffectValParam<Vector2d> param(ParamInfo{});
    param.setFunctionType(EffectValParamFnType::Keyframed, 0.5);
    Counter counter(*param.graph());
    {
        const JournalSuspension suspension(param);
        for (int channel = 0; channel < 2; ++channel) {
            EXPECT_TRUE(param.restoreKeyframeErased(channel, 0.5));
            EXPECT_TRUE(param.restoreKeyframeInserted(channel, key(0.25, 4.0)));
            EXPECT_TRUE(param.restoreKeyframeInserted(channel, key(0.75, 5.0)));
            EXPECT_FALSE(param.restoreKeyframeInserted(channel, key(0.75, 6.0)));
            EXPECT_FALSE(param.restoreKeyframeErased(channel, 0.5));
            EXPECT_FALSE(param.restoreKeyframeChanged(channel, key(0.5, 1.0)));
        }
        EXPECT_FALSE(param.restoreKeyframeInserted(2, key(0.1, 0.0)));
        EXPECT_FALSE(param.restoreKeyframeErased(-1, 0.25));
        EXPECT_FALSE(param.restoreConstant(ParamValue(1.0)));
        EXPECT_EQ(counter.count, 0);
    }
    EXPECT_EQ(counter.count, 1);
    EXPECT_EQ(param.getValue(0.5), (Vector2d{4.5, 4.5}));
    EffectValParam<bool> toggle(ParamInfo{});
    EXPECT_FALSE(toggle.restoreFunctionType(EffectValParamFnType::Keyframed));
    EXPECT_FALSE(toggle.restoreKeyframeInserted(0, key(0.1, 0.0)));
}
