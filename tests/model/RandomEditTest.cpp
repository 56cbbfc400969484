#include "tests/support/SampleEdit.h"

#include "oribund/host/edit/EditGesture.h"

#include <gtest/gtest.h>

#include <random>

using namespace sample;
using oribund::ChangeKind;
using oribund::EffectValParamFnType;

namespace
{
/** Does anything at all to an edit, sensible or not. */
class Monkey
{
public:
    explicit Monkey(unsigned seed)
        : random_(seed)
    {
    }

    void act()
    {
        switch (below(20)) {
        case 0:
            editor().addClip(
                {media("/m/" + std::to_string(below(3)), 400), below(300), 1 + below(90), videoTrack(), audioTrack()},
                below(400), collision());
            break;
        case 1:
            editor().removeSegment(segment());
            break;
        case 2:
            editor().moveSegment(segment(), below(2) ? videoTrack() : audioTrack(), below(400), collision(), kind());
            break;
        case 3:
            editor().trimStart(segment(), below(400), kind());
            break;
        case 4:
            editor().trimEnd(segment(), below(400), kind());
            break;
        case 5:
            editor().splitSegment(segment(), below(400));
            break;
        case 6:
            editor().addEffect(segment(), below(4) ? "tint" : "echo", below(4) - 1);
            break;
        case 7:
            if (const ObjectId id = effect(); below(2))
                editor().moveEffect(id, below(4));
            else
                editor().removeEffect(id);
            break;
        case 8:
            if (const ObjectId id = effect())
                editor().setEffectsEnabled({&id, 1}, below(2));
            break;
        case 9:
            editor().addTransition(segment(), {0, 0, 0, below(40), "", false, 0.0});
            break;
        case 10:
            editor().addCue({{}, below(100) * 0.1, L"cue", {}, {}, 4});
            break;
        case 11:
            changeCue();
            break;
        case 12:
            changeTracks();
            break;
        case 13:
            if (below(3))
                endAct();
            else
                gesture_.begin(bench.edit, below(2) ? oribund::UIString(L"Act") : oribund::UIString());
            break;
        case 14:
            changeSettings(effect());
            break;
        default:
            changeParam();
            break;
        }
    }

    void changeSettings(ObjectId id)
    {
        const int what = below(8);
        if (what == 0)
            editor().renameEffect(id, below(2) ? "Own name" : "");
        else if (what == 1)
            editor().resetEffect(id);
        else if (what == 2)
            editor().keyframeAll(id, below(5) * 0.25);
        else if (const auto from = bench.timeline().findEffect(effect()); from && what == 3)
            editor().pasteSettings(from->data(), id);
        else
            editor().setMask(id, below(3) > 0);
    }

    void endAct()
    {
        gesture_.finish();
        bench.undo().endGesture();
    }

    Bench bench;

private:
    Editor& editor() { return bench.editor; }

    int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

    Collision collision() { return below(2) ? Collision::Refuse : Collision::Overwrite; }

    ChangeKind kind()
    {
        const ChangeKind kinds[] = {ChangeKind::Single, ChangeKind::Start, ChangeKind::Continuation};
        return kinds[below(3)];
    }

    ObjectId track(TrackKind kind)
    {
        std::vector<ObjectId> ids{kNoObject};
        for (const auto& candidate : bench.timeline().tracks())
            if (candidate->data.kind == kind)
                ids.push_back(candidate->id());
        return ids[static_cast<std::size_t>(below(static_cast<int>(ids.size())))];
    }

    ObjectId videoTrack() { return track(TrackKind::Video); }

    ObjectId audioTrack() { return track(TrackKind::Audio); }

    ObjectId segment()
    {
        std::vector<ObjectId> ids{kNoObject};
        for (const auto& candidate : bench.timeline().tracks())
            for (const Segment* s : candidate->segments)
                ids.push_back(s->id());
        return ids[static_cast<std::size_t>(below(static_cast<int>(ids.size())))];
    }

    ObjectId effect()
    {
        const Segment* const where = bench.timeline().findSegment(segment());
        if (!where || where->effects.empty())
            return kNoObject;
        const auto& found = where->effects[static_cast<std::size_t>(below(static_cast<int>(where->effects.size())))];
        return objectOf(found->mask() && below(2) ? found->mask()->id() : found->id());
    }

    void changeCue()
    {
        const auto& cues = bench.edit->getCues();
        if (cues.empty())
            return;
        oribund::Cue cue = cues[static_cast<std::size_t>(below(static_cast<int>(cues.size())))];
        cue.time = below(100) * 0.1;
        if (below(2))
            editor().changeCue(cue, kind());
        else
            editor().removeCue(cue.id);
    }

    void changeTracks()
    {
        const int what = below(12);
        if (what == 0)
            editor().removeTrack(videoTrack());
        else if (what < 3)
            editor().addTrack(below(2) ? TrackKind::Video : TrackKind::Audio, below(5), "T");
        else if (what < 6)
            editor().setTrackEnabled(videoTrack(), below(2));
        else if (what < 8)
            editor().unlink(segment());
    }

    void changeParam()
    {
        const auto live = bench.timeline().findEffect(effect());
        if (!live)
            return;
        const auto param = live->paramAt(below(live->paramCount()));
        const double time = below(41) * 0.05 - 0.5;
        if (!param->graph() || below(4) == 0) {
            param->setConstantValue(below(2) ? param->defaultValue() : param->valueAt(time), kind());
        } else if (param->functionType() == EffectValParamFnType::Constant) {
            param->setFunctionType(EffectValParamFnType::Keyframed, time, kind());
        } else {
            changeGraph(*param->graph(), time);
            if (below(8) == 0)
                param->setFunctionType(EffectValParamFnType::Constant, time, kind());
        }
    }

    void changeGraph(oribund::Graph1dBase& graph, double time)
    {
        const int key = below(graph.size() + 1);
        switch (below(8)) {
        case 0:
            graph.addKeyframe(time, kind());
            break;
        case 1:
            graph.subdivide(time, kind());
            break;
        case 2:
            if (graph.size() > 1)
                graph.removeKeyframe(key, kind());
            break;
        case 3:
            graph.moveKeyframe(key, time, kind());
            break;
        case 4:
            graph.setKeyframeType(key, below(2) ? oribund::KeyframeType::Smooth : oribund::KeyframeType::Linear,
                                  kind());
            break;
        case 5:
            moveKeyframes(graph);
            break;
        case 6:
            pasteKeyframes(graph);
            break;
        default:
            graph.channel(below(graph.channelCount())).setKeyframeValue(key, below(100) * 0.01, kind());
        }
    }

    void moveKeyframes(oribund::Graph1dBase& graph)
    {
        const double by = (below(21) - 10) * 0.001;
        std::vector<int> indices;
        std::vector<double> times;
        for (int i = below(graph.size()); i < graph.size(); ++i) {
            indices.push_back(i);
            times.push_back(graph.timeAt(i) + by);
        }
        graph.setKeyframeTimes(indices, times, kind());
    }

    /** One keyframe, or so many that a few of them can be moved one by one. */
    void pasteKeyframes(oribund::Graph1dBase& graph)
    {
        std::vector<ChannelData> channels(static_cast<std::size_t>(graph.channelCount()));
        const int count = below(3) ? 1 : 40;
        for (int i = 0; i < count; ++i)
            for (ChannelData& channel : channels)
                channel.push_back(key(i * 0.025, below(100) * 0.01));
        graph.setKeyframes(channels, kind());
    }

    std::mt19937 random_;
    oribund::EditGesture gesture_;
};
} // namespace

TEST(RandomEdits, UndoneToTheStartAndRedoneToTheEndAreExact)
{
    for (unsigned seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(seed);
        Monkey monkey(seed);
        UndoStack& undo = monkey.bench.undo();
        std::vector<EditData> states{monkey.bench.edit->snapshot()};
        for (int i = 0; i < 150; ++i) {
            monkey.act();
            const std::string fault = findFault(monkey.bench.edit->snapshot());
            ASSERT_EQ(fault, "") << "after " << i;
            if (i % 5 == 0) {
                monkey.endAct();
                for (unsigned back = seed % 3; i % 25 == 0 && back > 0; --back)
                    undo.undo();
                states.resize(undo.position() + 1);
                states.back() = monkey.bench.edit->snapshot();
            }
        }
        monkey.endAct();
        const EditData end = monkey.bench.edit->snapshot();
        const std::size_t last = undo.position();
        ASSERT_GT(undo.size(), 5u);

        while (undo.undo()) {
            const EditData& known = undo.position() < states.size() ? states[undo.position()] : EditData();
            if (!known.tracks.empty()) {
                ASSERT_EQ(monkey.bench.edit->snapshot(), known) << "undone to " << undo.position();
            }
        }
        EXPECT_EQ(monkey.bench.edit->snapshot(), states.front());
        while (undo.position() < last && undo.redo()) {
            const EditData& known = undo.position() < states.size() ? states[undo.position()] : EditData();
            if (!known.tracks.empty()) {
                ASSERT_EQ(monkey.bench.edit->snapshot(), known) << "redone to " << undo.position();
            }
        }
        EXPECT_EQ(monkey.bench.edit->snapshot(), end);
        EXPECT_EQ(EditModel(end, catalogue()).snapshot(), end);
    }
}
