// A still of 720p with one effect, asked for and waited for: by way of a worker, and by a renderer in this process. The
// same after a slider was moved, masked and not. And how long it takes until there is a picture again after a worker
// was killed.

#include "bench/engine/BenchEdit.h"
#include "workbench/engine/worker/RenderWorker.h"
#include "workbench/engine/worker/graph/MltSession.h"
#include "workbench/model/EditModel.h"
#include "workbench/model/Editor.h"
#include "workbench/model/EffectCatalogue.h"
#include "workbench/model/Ids.h"
#include "workbench/model/projection/Projector.h"

#include <benchmark/benchmark.h>

#include <csignal>
#include <filesystem>
#include <fstream>

namespace workbench
{
namespace
{

void stillFromWorker(benchmark::State& state)
{
    Latest latest;
    Engine engine(benchHost(), latest.callbacks());
    engine.load(colourEdit());
    engine.requestFrame(0, kWidth, kHeight);
    latest.wait(0); // it has to come up
    int frame = 0;
    for (auto _ : state) {
        frame = (frame + 1) % kFrames;
        engine.requestFrame(frame, kWidth, kHeight);
        if (!latest.wait(frame))
            return state.SkipWithError("no picture came");
    }
}

BENCHMARK(stillFromWorker)->UseRealTime()->Unit(benchmark::kMillisecond);

void stillInProcess(benchmark::State& state)
{
    Latest latest;
    const auto marks = TraceMarks::create();
    RenderWorker renderer(MltSession::open(), latest.callbacks(), {}, *marks);
    renderer.load(std::make_shared<const Projection>(colourEdit()), {}, 1);
    renderer.request({0, kWidth, kHeight});
    latest.wait(0);
    int frame = 0;
    for (auto _ : state) {
        frame = (frame + 1) % kFrames;
        renderer.request({frame, kWidth, kHeight});
        if (!latest.wait(frame))
            return state.SkipWithError("no picture came");
    }
}

BENCHMARK(stillInProcess)->UseRealTime()->Unit(benchmark::kMillisecond);

/** From a new value of a parameter to the picture that shows it. */
void sliderMove(benchmark::State& state)
{
    const EffectCatalogue& effects = benchHost()->installed()->effects;
    const auto model = oribund::Kt::makePtr<EditModel>(emptyEdit("", {kWidth, kHeight, 25, 1, 1, 1, 709}), effects);
    Editor editor(*model);
    MediaInfo still;
    still.path = "color:#ff204060";
    still.hasVideo = true;
    const ObjectId clip = editor.addClip({still, 0, kFrames, model->timeline().tracks()[0]->id(), kNoObject}, 0).object;
    const ObjectId effect = editor.addEffect(clip, "frei0r.hueshift0r").object;
    if (state.range(0) != 0)
        editor.setMask(effect, true);
    const auto param = model->timeline().findEffect(effect)->paramAt(0);

    Latest latest;
    Engine engine(benchHost(), latest.callbacks());
    engine.load(project(*model));
    engine.requestFrame(0, kWidth, kHeight);
    latest.wait(0);
    int degrees = 0;
    for (auto _ : state) {
        param->setConstantValue(oribund::ParamValue(oribund::Angle{static_cast<double>(++degrees % 360)}));
        const auto revision = engine.update(projectParam(*model, stampOf(effect), param->id()));
        engine.requestFrame(0, kWidth, kHeight);
        if (!latest.waitForRevision(revision))
            return state.SkipWithError("no picture came");
    }
}

BENCHMARK(sliderMove)->ArgName("masked")->Arg(0)->Arg(1)->UseRealTime()->Unit(benchmark::kMillisecond);

void killWorkers()
{
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
        std::ifstream children(thread.path() / "children");
        for (pid_t child = 0; children >> child;)
            kill(child, SIGKILL);
    }
}

void pictureAfterADeath(benchmark::State& state)
{
    Latest latest;
    Engine engine(benchHost(), latest.callbacks());
    engine.load(colourEdit());
    engine.requestFrame(0, kWidth, kHeight);
    latest.wait(0);
    int frame = 0;
    for (auto _ : state) {
        frame = (frame + 1) % kFrames;
        killWorkers();
        engine.requestFrame(frame, kWidth, kHeight);
        if (!latest.wait(frame))
            return state.SkipWithError("no picture came");
    }
    const auto open =
        std::distance(std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator());
    state.counters["openFiles"] = static_cast<double>(open);
    std::ifstream memory("/proc/self/statm");
    double all = 0.0;
    double resident = 0.0;
    memory >> all >> resident;
    state.counters["residentPages"] = resident;
}

BENCHMARK(pictureAfterADeath)->UseRealTime()->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(pictureAfterADeath)->UseRealTime()->Unit(benchmark::kMillisecond)->Iterations(200);

} // namespace
} // namespace workbench
