#pragma once

#include "workbench/model/EditModel.h"
#include "workbench/model/EffectCatalogue.h"

namespace bench
{

using namespace workbench;

inline constexpr int kKeysEach = 100;

inline const EffectCatalogue& catalogue()
{
    static const EffectCatalogue instance = [] {
        EffectCatalogue made;
        EffectDescription effect;
        effect.service = "level";
        effect.title = "Level";
        ParamDescription level;
        level.property = level.name = "Level";
        level.animatable = true;
        effect.params = {level};
        made.add(effect);
        return made;
    }();
    return instance;
}

/** One second of media after the other, each with an effect of kKeysEach keyframes; or all of them in one effect. */
inline EditData animated(int keyframes, bool inOneEffect)
{
    EditData edit = emptyEdit("bench", {});
    MediaInfo media;
    media.path = "/m/clip.mp4";
    media.frames = 10000000;
    media.hasVideo = true;
    edit.media.push_back({4, media});
    int id = 10;
    const int each = inOneEffect ? keyframes : kKeysEach;
    for (int done = 0; done < keyframes; done += each) {
        SegmentData segment{id++, 4, kNoObject, "clip", (done / each) * 25, 0, 25, {}};
        ParamData level{"Level", 0.5, true, {{}}};
        for (int i = 0; i < each; ++i) {
            oribund::Keyframe key;
            key.time = static_cast<double>(i) / each;
            key.value = i % 2 * 0.5;
            level.channels[0].push_back(key);
        }
        segment.effects.push_back({id++, "level", true, {level}, {}});
        edit.tracks[0].segments.push_back(segment);
    }
    return edit;
}

} // namespace bench
