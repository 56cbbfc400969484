#include "tests/support/SampleEdit.h"
#include "workbench/model/MaskDescription.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

using namespace sample;
using oribund::ChangeKind;

namespace
{
/** Two linked clips that touch, an effect with keyframes on the second picture, a transition, a cue. */
struct Filled : Bench {
    ObjectId first = editor.addClip({media(), 100, 50, kVideo, kAudio}, 0).object;
    ObjectId second = editor.addClip({media(), 300, 50, kVideo, kAudio}, 50).object;
    ObjectId tint = editor.addEffect(second, "tint").object;
    ObjectId transition = editor.addTransition(first, {0, 0, 0, 10, "", false, 0.0}).object;
    ObjectId cue = editor.addCue({{}, 1.0, L"here", {}, {}, 4}).object;

    Filled()
    {
        const auto level = param<double>(tint, kLevel);
        level->setFunctionType(oribund::EffectValParamFnType::Keyframed, 0.2);
        level->addKeyframeAt(0.6, 80.0);
        undo().endGesture();
    }
};

} // namespace

TEST(Editor, EveryCommandIsOneStepThatCanBeUndoneAndRedone)
{
    const std::pair<const char*, std::function<EditOutcome(Filled&)>> commands[] = {
        {"Add track V2", [](Filled& f) { return f.editor.addTrack(TrackKind::Video, 0, "V2"); }},
        {"Remove track V1", [](Filled& f) { return f.editor.removeTrack(kVideo); }},
        {"Switch off track A1", [](Filled& f) { return f.editor.setTrackEnabled(kAudio, false); }},
        {"Rename track V1 to Main", [](Filled& f) { return f.editor.renameTrack(kVideo, "Main"); }},
        {"Add cat.mp4",
         [](Filled& f) {
             return f.editor.addClip({media("/m/cat.mp4"), 0, 9, kVideo, kAudio}, 200);
         }},
        {"Add cat.mp4",
         [](Filled& f) {
             return f.editor.addClip({media("/m/cat.mp4"), 0, 60, kVideo, kAudio}, 20, Collision::Overwrite);
         }},
        {"Remove cup.mp4", [](Filled& f) { return f.editor.removeSegment(f.second); }},
        {"Move cup.mp4", [](Filled& f) { return f.editor.moveSegment(f.second, kVideo, 300); }},
        {"Move cup.mp4", [](Filled& f) { return f.editor.moveSegment(f.second, kVideo, 25, Collision::Overwrite); }},
        {"Trim cup.mp4", [](Filled& f) { return f.editor.trimStart(f.second, 60); }},
        {"Trim cup.mp4", [](Filled& f) { return f.editor.trimEnd(f.second, 70); }},
        {"Split cup.mp4", [](Filled& f) { return f.editor.splitSegment(f.second, 77); }},
        {"Unlink cup.mp4", [](Filled& f) { return f.editor.unlink(f.second); }},
        {"Add Tint", [](Filled& f) { return f.editor.addEffect(f.first, "tint"); }},
        {"Remove Tint", [](Filled& f) { return f.editor.removeEffect(f.tint); }},
        {"Switch off Tint",
         [](Filled& f) {
             return f.editor.setEffectsEnabled({&f.tint, 1}, false);
         }},
        {"Rename Tint to Sepia", [](Filled& f) { return f.editor.renameEffect(f.tint, "Sepia"); }},
        {"Add mask to Tint", [](Filled& f) { return f.editor.setMask(f.tint, true); }},
        {"Reset Tint, without its keyframes", [](Filled& f) { return f.editor.resetEffect(f.tint); }},
        {"Keyframe all of Tint", [](Filled& f) { return f.editor.keyframeAll(f.tint, 0.4); }},
        {"Paste settings to Tint",
         [](Filled& f) {
             EffectData other{0, "tint", true, {}, {}};
             other.params = {{"Level", 7.0, false, {}}};
             other.mask.push_back(newMask(kNoObject));
             return f.editor.pasteSettings(other, f.tint);
         }},
        {"Change transition",
         [](Filled& f) {
             return f.editor.changeTransition({f.transition, 0, 0, 4, "w", true, 1});
         }},
        {"Remove transition", [](Filled& f) { return f.editor.removeTransition(f.transition); }},
        {"Add cue",
         [](Filled& f) {
             return f.editor.addCue({{}, 2.0, L"there", {}, {}, 4});
         }},
        {"Change cue",
         [](Filled& f) {
             return f.editor.changeCue({stampOf(f.cue), 0.5, L"moved", {}, {}, 4});
         }},
        {"Remove cue", [](Filled& f) { return f.editor.removeCue(stampOf(f.cue)); }},
    };
    for (const auto& [title, command] : commands) {
        SCOPED_TRACE(title);
        Filled f;
        const EditData before = f.edit->snapshot();
        const std::size_t steps = f.undo().size();
        const EditOutcome outcome = command(f);
        ASSERT_TRUE(outcome) << outcome.refused;
        const EditData after = f.edit->snapshot();
        EXPECT_NE(before, after);
        EXPECT_EQ(findFault(after), "");
        EXPECT_EQ(f.undo().size(), steps + 1);
        EXPECT_EQ(f.undoTitle(), title);
        ASSERT_TRUE(f.undo().undo());
        EXPECT_EQ(f.edit->snapshot(), before);
        ASSERT_TRUE(f.undo().redo());
        EXPECT_EQ(f.edit->snapshot(), after);

        f.undo().undo();
        f.edit->setReadOnly(true);
        EXPECT_EQ(command(f).refused, "The edit is read-only.");
        EXPECT_EQ(f.edit->snapshot(), before);
        EXPECT_TRUE(f.undo().canRedo()) << "a refused command must not cost the redo";
    }
}

TEST(Editor, RefusesWhatDoesNotFitAndLeavesEverythingAsItWas)
{
    Filled f;
    f.editor.unlink(f.first);
    const EditData before = f.edit->snapshot();
    const std::size_t steps = f.undo().size();
    const EditOutcome refusals[] = {
        f.editor.addClip({media(), 0, 10, kVideo, kNoObject}, 45),     // occupied
        f.editor.addClip({media(), 990, 20, kVideo, kNoObject}, 500),  // beyond the media
        f.editor.addClip({media(), 0, 10, kAudio, kNoObject}, 500),    // a picture on a track for sound
        f.editor.addClip({media(), 0, 10, kNoObject, kNoObject}, 500), // nowhere
        f.editor.addClip({media(), 0, 10, kVideo, kNoObject}, -1),     // before the start
        f.editor.moveSegment(f.second, kVideo, 30),                    // occupied
        f.editor.moveSegment(f.second, kAudio, 300),                   // wrong kind
        f.editor.moveSegment(999, kVideo, 300),                        // no such segment
        f.editor.trimEnd(f.first, 51),                                 // into the neighbour
        f.editor.trimStart(f.second, 100),                             // nothing left
        f.editor.trimEnd(f.second, 1000),                              // beyond the media
        f.editor.splitSegment(f.second, 50),                           // at its start
        f.editor.addEffect(f.second, "none"),                          // not installed
        f.editor.addEffect(f.second, "crash"),                         // blocked
        f.editor.addEffect(f.second, "echo"),                          // for sound
        f.editor.addEffect(f.second, "mask"),                          // belongs to an effect
        f.editor.setMask(999, true),                                   // no such effect
        f.editor.pasteSettings({0, "echo", true, {{"Delay", 1.0, false, {}}}, {}}, f.tint),
        f.editor.addTransition(f.first, {0, 0, 0, 4, "", false, 0.0}),  // there is one
        f.editor.addTransition(f.second, {0, 0, 0, 4, "", false, 0.0}), // nothing follows
        f.editor.addCue({{}, 1.0, L"again", {}, {}, 4}),                // there is one
        f.editor.addCue({{}, NAN, L"never", {}, {}, 4}),
        f.editor.addCue({{}, 1.1e9, L"in 35 years", {}, {}, 4}),
        f.editor.changeCue({stampOf(f.cue), 1.1e9, L"in 35 years", {}, {}, 4}),
        f.editor.addClip({media(), 0, 10, kVideo, kNoObject}, kMostFrames + 1),
        f.editor.addClip({media("/m/endless.mp4", 2'000'000'000), 0, 0, kVideo, kNoObject}, 500),
        f.editor.moveSegment(f.second, kVideo, std::numeric_limits<int>::max()),
        f.editor.trimStart(f.second, std::numeric_limits<int>::min()),
    };
    for (const EditOutcome& refusal : refusals)
        EXPECT_FALSE(refusal) << &refusal - refusals;
    EXPECT_EQ(f.edit->snapshot(), before);
    EXPECT_EQ(f.undo().size(), steps);
}

TEST(Editor, OverwritingTakesAwayExactlyWhatLiesBelow)
{
    Bench b;
    const ObjectId under = b.addPicture(0, 100);
    const ObjectId over = b.editor.addClip({media(), 0, 20, kVideo, kNoObject}, 40, Collision::Overwrite).object;
    ASSERT_TRUE(b.timeline().findSegment(over));
    EXPECT_EQ(b.segment(under).end(), 40);
    const Segment* const rest = b.timeline().segmentAt(kVideo, 60);
    ASSERT_TRUE(rest);
    EXPECT_EQ(rest->data.start, 60);
    EXPECT_EQ(rest->data.end(), 100);
    EXPECT_EQ(rest->data.in, 160) << "the same pictures at the same frames";

    b.editor.moveSegment(over, kVideo, 50, Collision::Overwrite);
    EXPECT_EQ(b.timeline().segmentAt(kVideo, 45), nullptr);
    EXPECT_EQ(b.timeline().segmentAt(kVideo, 70)->data.in, 170);
}

TEST(Editor, TransitionsAreLimitedByMediaAndFollowTheirCut)
{
    Bench b;
    const ObjectId first = b.addPicture(0, 50, 946); // 4 frames are left after it
    const ObjectId second = b.addPicture(50, 50, 3); // 3 before it
    const ObjectId id = b.editor.addTransition(first, {0, 0, 0, 40, "", false, 0.0}).object;
    const auto length = [&] {
        const TransitionData* const t = b.timeline().findTransition(id);
        return t ? t->length : 0;
    };
    EXPECT_EQ(length(), 7); // 3 frames before the cut, 4 after it
    b.editor.trimEnd(first, 49);
    EXPECT_EQ(length(), 0) << "the segments no longer touch";
    b.undo().undo();
    b.editor.trimEnd(second, 52);
    EXPECT_EQ(length(), 4) << "no more of it after the cut than the segment has";
    const ObjectId right = b.editor.splitSegment(first, 20).object;
    EXPECT_EQ(b.timeline().findTransition(id)->left, right);
    b.editor.moveSegment(second, kVideo, 60);
    EXPECT_EQ(length(), 0);

    Bench tight;
    const ObjectId whole = tight.addPicture(0, 1000, 0);
    tight.addPicture(1000, 1000, 0);
    EXPECT_EQ(tight.editor.longestTransition(whole), 0);
    EXPECT_FALSE(tight.editor.addTransition(whole, {0, 0, 0, 10, "", false, 0.0}));
}
