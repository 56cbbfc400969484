#include "tests/support/SampleEdit.h"
#include "workbench/model/MaskDescription.h"

#include <gtest/gtest.h>

#include <functional>

using namespace sample;

namespace
{
EditData soundEdit()
{
    EditData edit = emptyEdit("test", {});
    edit.media.push_back({10, media()});
    SegmentData segment;
    segment.media = 10;
    segment.in = 50;
    segment.length = 20;
    segment.id = 11;
    edit.tracks[0].segments.push_back(segment);
    segment.id = 12;
    segment.start = 20;
    EffectData effect;
    effect.id = 13;
    effect.service = "tint";
    effect.params.push_back({"Level", 20.0, true, {{key(0.0, 1.0), key(0.5, 2.0)}}});
    effect.mask.push_back(newMask(16));
    segment.effects.push_back(effect);
    edit.tracks[0].segments.push_back(segment);
    edit.tracks[0].transitions.push_back({14, 11, 12, 6, "", false, 0.0});
    oribund::Cue cue;
    cue.id = stampOf(15);
    edit.cues.push_back(cue);
    return edit;
}
} // namespace

TEST(EditData, FaultsAreFound)
{
    ASSERT_EQ(findFault(soundEdit()), "");
    const std::pair<const char*, std::function<void(EditData&)>> faults[] = {
        {"no rate", [](EditData& e) { e.format.fpsDenominator = 0; }},
        {"media without rate", [](EditData& e) { e.media[0].info.fpsNumerator = 0; }},
        {"id twice", [](EditData& e) { e.tracks[0].segments[1].id = 11; }},
        {"id of another kind", [](EditData& e) { e.tracks[0].segments[1].effects[0].id = 2; }},
        {"a mask with the id of its effect", [](EditData& e) { e.tracks[0].segments[1].effects[0].mask[0].id = 13; }},
        {"an effect as a mask", [](EditData& e) { e.tracks[0].segments[1].effects[0].mask[0].service = "tint"; }},
        {"a mask of a mask",
         [](EditData& e) { e.tracks[0].segments[1].effects[0].mask[0].mask.push_back(newMask(17)); }},
        {"no id", [](EditData& e) { e.tracks[1].id = 0; }},
        {"foreign cue id", [](EditData& e) { e.cues[0].id = oribund::IdStamp(7, 7, 7); }},
        {"overlap", [](EditData& e) { e.tracks[0].segments[1].start = 19; }},
        {"no length", [](EditData& e) { e.tracks[0].segments[1].length = 0; }},
        {"before the media", [](EditData& e) { e.tracks[0].segments[0].in = -1; }},
        {"unknown media", [](EditData& e) { e.tracks[0].segments[0].media = 99; }},
        {"transition over a gap", [](EditData& e) { e.tracks[0].segments[1].start = 21; }},
        {"transition to nothing", [](EditData& e) { e.tracks[0].transitions[0].right = 99; }},
        {"transition too long", [](EditData& e) { e.tracks[0].transitions[0].length = 50; }},
        {"keys out of order",
         [](EditData& e) { e.tracks[0].segments[1].effects[0].params[0].channels[0][1].time = 0; }},
        {"a key that is no number",
         [](EditData& e) { e.tracks[0].segments[1].effects[0].params[0].channels[0][1].value = NAN; }},
        {"channels of different length",
         [](EditData& e) { e.tracks[0].segments[1].effects[0].params[0].channels.push_back({}); }},
        {"a cue at no time", [](EditData& e) { e.cues[0].time = -1; }},
    };
    for (const auto& [name, spoil] : faults) {
        EditData edit = soundEdit();
        spoil(edit);
        EXPECT_NE(findFault(edit), "") << name;
    }
}

TEST(EditData, MediaLengthIsCountedInTheEditsRate)
{
    FormatData format;
    EXPECT_EQ(mediaLength(media("x", 1000), format), 1000);
    format.fpsNumerator = 30000;
    format.fpsDenominator = 1001;
    EXPECT_EQ(mediaLength(media("x", 25), format), 29); // 29.97 frames: the last is not whole
    MediaInfo same = media("x", 30000);
    same.fpsNumerator = 30000;
    same.fpsDenominator = 1001;
    EXPECT_EQ(mediaLength(same, format), 30000);
}
