#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"
#include "workbench/model/EditModel.h"
#include "workbench/model/EffectCatalogue.h"
#include "workbench/model/Ids.h"
#include "workbench/model/host/ModelVob.h"

#include <benchmark/benchmark.h>

// One move of a drag of many keyframes, recorded for undo and told to whoever shows them.

using namespace workbench;

namespace
{
const EffectCatalogue& catalogue()
{
    static const EffectCatalogue instance = [] {
        EffectCatalogue made;
        EffectDescription effect;
        effect.service = effect.title = "level";
        for (const char* const name : {"a", "b", "c", "d"}) {
            ParamDescription param;
            param.property = param.name = name;
            param.animatable = true;
            effect.params.push_back(param);
        }
        made.add(effect);
        return made;
    }();
    return instance;
}

/** One segment, and on it an effect whose four parameters have that many keyframes together, two frames apart. */
EditData animated(int keyframes)
{
    EditData edit = emptyEdit("bench", {});
    MediaInfo media;
    media.path = "/m/clip.mp4";
    media.frames = 10000000;
    media.hasVideo = true;
    edit.media.push_back({4, media});
    const int frames = keyframes;
    SegmentData segment{10, 4, kNoObject, "clip", 0, 0, frames, {}};
    EffectData effect{11, "level", true, {}, {}};
    for (const char* const name : {"a", "b", "c", "d"}) {
        ParamData param{name, 0.5, true, {{}}};
        for (int i = 0; i < keyframes / 4; ++i) {
            oribund::Keyframe key;
            key.time = (frames / 4 + 2.0 * i) / frames;
            key.value = i % 2 * 0.5;
            param.channels[0].push_back(key);
        }
        effect.params.push_back(param);
    }
    segment.effects.push_back(effect);
    edit.tracks[0].segments.push_back(segment);
    return edit;
}

void trimMove(benchmark::State& state)
{
    const auto edit = oribund::Kt::makePtr<EditModel>(animated(static_cast<int>(state.range(0))), catalogue());
    ModelVob vob;
    vob.setEdit(edit);
    oribund::CompoundEffectMonitor& monitor = *vob.getEffectMonitor();
    const oribund::IdStamp track = stampOf(edit->timeline().tracks().front()->id());
    monitor.selectAllKeyframes(stampOf(11), {}, true);
    double by = edit->getCelResolution();
    for (auto _ : state) {
        monitor.makeBackup(oribund::BackupKind::Undo, {});
        if (!monitor.trimSelectedKeyframes(track, by))
            state.SkipWithError("nothing has moved");
        by = -by;
    }
    monitor.endTrim();
}
} // namespace

BENCHMARK(trimMove)->Arg(100)->Arg(10000)->Unit(benchmark::kMicrosecond);
