// One frame after the other of a clip with 31 light effects: by the engine's graph with and without its marks, and as
// the command-line player does it with the saved project.
#include "bench/engine/BenchEdit.h"
#include "workbench/engine/protocol/TraceMarks.h"
#include "workbench/engine/worker/graph/FrameRendering.h"
#include "workbench/engine/worker/graph/MltGraph.h"
#include "workbench/engine/worker/graph/MltSession.h"

#include <benchmark/benchmark.h>
#include <mlt++/Mlt.h>

#include <string>

namespace workbench
{
namespace
{

constexpr int kEffects = 31;

void step(benchmark::State& state, Mlt::Producer& producer)
{
    int frame = 0;
    for (auto _ : state) {
        frame = (frame + 1) % kFrames;
        if (!renderFrame(producer, frame, {kWidth, kHeight}))
            return state.SkipWithError("no picture");
    }
}

void stepOfEngine(benchmark::State& state, TraceMarks* marks)
{
    MltGraph::Options options;
    options.marks = marks;
    const auto graph = MltGraph::build(MltSession::open(), colourEdit(kEffects), std::move(options));
    step(state, graph->producer());
}

void stepWithMarks(benchmark::State& state)
{
    const auto marks = TraceMarks::create();
    stepOfEngine(state, marks.get());
}

void stepWithoutMarks(benchmark::State& state)
{
    stepOfEngine(state, nullptr);
}

void stepLikePlayer(benchmark::State& state)
{
    const auto session = MltSession::open();
    const Projection edit = colourEdit(kEffects);
    std::string xml = "<mlt><profile width=\"1280\" height=\"720\" frame_rate_num=\"25\" frame_rate_den=\"1\" "
                      "sample_aspect_num=\"1\" sample_aspect_den=\"1\" progressive=\"1\" colorspace=\"709\"/>"
                      "<producer id=\"clip\"><property name=\"mlt_service\">color</property>"
                      "<property name=\"resource\">" +
                      edit.clips[0].resource + "</property>";
    for (const ProjectedFilter& filter : edit.clips[0].filters)
        xml += "<filter><property name=\"mlt_service\">" + filter.service + "</property><property name=\"level\">" +
               filter.properties[0].value + "</property></filter>";
    xml += "</producer><playlist id=\"track\"><entry producer=\"clip\" in=\"0\" out=\"249\"/></playlist>"
           "<tractor><track producer=\"track\"/></tractor></mlt>";
    Mlt::Profile profile;
    Mlt::Producer producer(profile, "xml-string", xml.c_str());
    if (!producer.is_valid())
        return state.SkipWithError("the project is not read");
    step(state, producer);
}

BENCHMARK(stepWithMarks)->MeasureProcessCPUTime()->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(stepWithoutMarks)->MeasureProcessCPUTime()->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(stepLikePlayer)->MeasureProcessCPUTime()->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace workbench
