#include "workbench/engine/client/Engine.h"

#include "tests/engine/EngineFixture.h"
#include "workbench/engine/protocol/TraceMarks.h"
#include "workbench/engine/worker/graph/FrameRendering.h"
#include "workbench/engine/worker/graph/MltGraph.h"
#include "workbench/engine/worker/graph/MltSession.h"
#include "workbench/model/projection/ProjectionQueries.h"

#include <gmock/gmock.h>
#include <mlt++/Mlt.h>

#include <atomic>
#include <clocale>
#include <cstdlib>
#include <list>
#include <set>

namespace workbench
{
namespace
{

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(EngineTest, rendersTheFrameAndRevisionThatWereAskedFor)
{
    Engine engine(testEngine(), listener.callbacks());
    engine.requestFrame(10, 320, 180); // nothing is loaded yet: nothing to show
    const auto loaded = engine.load(sampleEdit("frei0r.brightness", {{"0", "0.5"}}));
    engine.requestFrame(10, 160, 160);
    ASSERT_TRUE(listener.waitForFrame(10, loaded));
    const FrameImagePtr plain = listener.frames.back();
    EXPECT_EQ(plain->width, 160);
    EXPECT_EQ(plain->height, 90);
    EXPECT_EQ(plain->rgba.size(), 160U * 90U * 4U);

    const auto updated = engine.update({{kSampleEffect, "0", "0.9"}});
    EXPECT_GT(updated, loaded);
    engine.requestFrame(10, 160, 160);
    ASSERT_TRUE(listener.waitForFrame(10, updated));
    EXPECT_GT(brightnessAt(*listener.frames.back()), brightnessAt(*plain) + 50);
    EXPECT_THAT(listener.problems, IsEmpty());
}

TEST_F(EngineTest, ofManyRequestsTheLatestWinsAndMediaStayOpen)
{
    Engine engine(testEngine(), listener.callbacks());
    std::uint64_t revision = 0;
    for (int i = 0; i < 200; ++i) {
        revision = engine.load(sampleEdit("frei0r.brightness", {{"0", "0.5"}}));
        engine.requestFrame(i % 70, 320, 180);
    }
    engine.requestFrame(42, 320, 180);
    ASSERT_TRUE(listener.waitForFrame(42, revision));
    EXPECT_LT(listener.frames.size(), 100U);
}

TEST_F(EngineTest, playsToTheEndAndStops)
{
    setenv("SDL_AUDIODRIVER", "dummy", 1);
    Engine engine(testEngine(), listener.callbacks());
    engine.load(sampleEdit());
    engine.requestFrame(45, 160, 90);
    engine.play();
    ASSERT_TRUE(listener.wait([&] { return listener.playing.size() == 2; }));
    EXPECT_THAT(listener.playing, ElementsAre(true, false));
    ASSERT_GE(listener.positions.size(), 10U);
    EXPECT_GE(listener.positions.front(), 45);
    EXPECT_GE(listener.positions.back(), 70);
    EXPECT_TRUE(std::is_sorted(listener.positions.begin(), listener.positions.end()));
    EXPECT_GE(listener.frames.size(), 5U);
    EXPECT_EQ(listener.frames.back()->height, 90);
}

TEST_F(EngineTest, pausesAndChangesWhilePlaying)
{
    setenv("SDL_AUDIODRIVER", "dummy", 1);
    Engine engine(testEngine(), listener.callbacks());
    engine.load(sampleEdit("frei0r.brightness", {{"0", "0.5"}}));
    engine.requestFrame(0, 160, 90);
    engine.play();
    ASSERT_TRUE(listener.wait([&] { return listener.positions.size() >= 3; }));
    const auto revision = engine.update({{kSampleEffect, "0", "1"}});
    ASSERT_TRUE(listener.wait(
        [&] { return listener.frames.back()->revision == revision && brightnessAt(*listener.frames.back()) > 700; }));
    engine.pause();
    ASSERT_TRUE(listener.wait([&] { return !listener.playing.empty() && !listener.playing.back(); }));
    engine.requestFrame(7, 160, 90);
    EXPECT_TRUE(listener.waitForFrame(7, revision));
}

TEST_F(EngineTest, missingMediaAndEffectsAreToldAndTheRestPlays)
{
    Projection edit = sampleEdit("no.such.effect", {});
    edit.clips[1].filters.push_back({"effect2", "frei0r.brightness", 0, 74, {{"0", "0.9"}}});
    Engine engine(testEngine(), listener.callbacks());
    auto revision = engine.load(edit);
    engine.requestFrame(3, 320, 180);
    ASSERT_TRUE(listener.waitForFrame(3, revision));
    ASSERT_EQ(listener.problems.size(), 1U);
    EXPECT_EQ(listener.problems[0].kind, EngineProblem::Kind::EffectMissing);
    EXPECT_EQ(listener.problems[0].subject, kSampleEffect);

    edit.clips[1].resource = "/no/such/file.mp4";
    revision = engine.load(edit);
    engine.requestFrame(60, 320, 180);
    ASSERT_TRUE(listener.waitForFrame(60, revision));
    EXPECT_EQ(listener.problems[1].kind, EngineProblem::Kind::MediaMissing);
    EXPECT_EQ(listener.problems[1].subject, "clip1");
}

/** Two clips in a row, with a dissolve between them. */
Projection dissolve()
{
    Projection edit = sampleEdit();
    edit.clips.push_back({"clip2", "color", "#ffff0000", 0, 49, {}, {}});
    ProjectedEntry first;
    first.kind = ProjectedEntry::Kind::Clip;
    first.length = 30;
    first.first = {"clip1", 0, 29};
    ProjectedEntry mix;
    mix.kind = ProjectedEntry::Kind::Mix;
    mix.length = 20;
    mix.first = {"clip1", 30, 49};
    mix.second = {"clip2", 0, 19};
    mix.transitions.push_back({"t", "luma", 0, 1, 0, 19, {}});
    ProjectedEntry last;
    last.kind = ProjectedEntry::Kind::Clip;
    last.length = 25;
    last.first = {"clip2", 20, 44};
    edit.tracks[1].entries = {first, mix, last};
    return edit;
}

TEST_F(EngineTest, dissolvesFromOneClipToTheNext)
{
    Engine engine(testEngine(), listener.callbacks());
    const auto revision = engine.load(dissolve());
    const auto redness = [&](int frame) {
        engine.requestFrame(frame, 320, 180);
        EXPECT_TRUE(listener.waitForFrame(frame, revision));
        const std::uint8_t* pixel = listener.frames.back()->pixel(160, 90);
        return pixel[0] - (pixel[1] + pixel[2]) / 2;
    };
    EXPECT_LT(redness(29), redness(40));
    EXPECT_LT(redness(40), redness(48));
    EXPECT_GT(redness(60), 240);
}

/** A clip, by itself, at a frame rate. */
Projection alone(const std::string& path, int rate, int length)
{
    Projection edit;
    edit.profile = {320, 180, rate, 1, 1, 1, 709, true};
    edit.length = length;
    edit.clips.push_back({"clip", "", path, 0, length - 1, {{"audio_index", "-1"}}, {}});
    ProjectedEntry entry;
    entry.kind = ProjectedEntry::Kind::Clip;
    entry.first = {"clip", 0, length - 1};
    edit.tracks.push_back({"track", "", ProjectedTrack::Hide::Nothing, {entry}});
    return edit;
}

TEST_F(EngineTest, theLastPictureStandsToTheEndWhereverOneBegins)
{
    const std::string longSound = SampleMedia::make(
        "long-sound.mp4", "-f lavfi -i mandelbrot=s=320x180:r=25:maxiter=200 -f lavfi -i sine=440:d=2.6 -t 2.6 "
                          "-filter:v trim=duration=2 -c:v libx264 -preset veryfast -pix_fmt yuv420p -c:a aac");
    for (const auto& [path, rate, last] : {std::tuple(SampleMedia::clip(), 60, 179), std::tuple(longSound, 25, 64)}) {
        const FrameSize size{320, 180};
        const auto fromHere = MltGraph::build(session, alone(path, rate, last + 1), {});
        const auto picture = renderFrame(fromHere->producer(), last, size);
        const auto played = MltGraph::build(session, alone(path, rate, last + 1), {});
        std::shared_ptr<FrameImage> expected;
        for (int frame = last - rate; frame <= last; ++frame)
            expected = renderFrame(played->producer(), frame, size);
        ASSERT_TRUE(picture && expected);
        EXPECT_EQ(picture->rgba, expected->rgba) << path;
    }
}

TEST_F(EngineTest, aClipOfTheEditsShapeFillsThePictureAtEverySize)
{
    for (const auto& [width, height] : {std::pair(1280, 720), std::pair(854, 480)}) {
        const std::string name = "white" + std::to_string(width);
        Projection edit = alone(SampleMedia::make(name + ".mp4", "-f lavfi -i color=white:s=" + std::to_string(width) +
                                                                     "x" + std::to_string(height) +
                                                                     " -t 0.2 -c:v libx264 -pix_fmt yuv420p"),
                                25, 5);
        edit.profile.width = width;
        edit.profile.height = height;
        const auto graph = MltGraph::build(session, edit, {});
        for (int space = 300; space < 360; space += 3) {
            const auto picture = renderFrame(graph->producer(), 1, fitFrame(graph->profile(), space, 2000));
            ASSERT_TRUE(picture);
            EXPECT_GT(picture->width, space - 36);
            EXPECT_GT(*picture->pixel(picture->width - 1, 20), 200) << width << " at " << space;
            EXPECT_GT(*picture->pixel(20, picture->height - 1), 200) << width << " at " << space;
        }
    }
}

TEST(MltGraphLife, nothingOfAGraphOutlivesIt)
{
    auto session = MltSession::open();
    const auto marks = TraceMarks::create();
    MltGraph::Options options;
    options.marks = marks.get();
    auto graph = MltGraph::build(session, sampleEdit("frei0r.brightness", {{"0", "0.5"}}), std::move(options));
    std::list<Mlt::Properties> held; // one more reference to each
    std::set<mlt_properties> seen;
    for (Mlt::Service* service : graph->services())
        if (seen.insert(service->get_properties()).second)
            held.emplace_back(service->get_properties());
    ASSERT_GE(held.size(), 6U);
    delete graph->producer().get_frame();

    MltGraph::Options rebuilt;
    rebuilt.former = std::move(graph);
    rebuilt.marks = marks.get();
    graph = MltGraph::build(session, dissolve(), std::move(rebuilt));
    delete graph->producer().get_frame();
    graph.reset();
    // What is held also holds what it reads from: let go of what nobody else holds, until nothing changes.
    const auto onlyHere = [](Mlt::Properties& properties) { return properties.ref_count() == 1; };
    while (held.remove_if(onlyHere) > 0) {
    }
    for (Mlt::Properties& properties : held)
        ADD_FAILURE() << (properties.get("mlt_service") ? properties.get("mlt_service") : "?") << " is still alive";
}

TEST(MltSessionLife, numbersAreReadWithAPointWhateverTheLocale)
{
    auto session = MltSession::open();
    if (std::setlocale(LC_NUMERIC, "de_DE.UTF-8")) {
        MltSession::useNumericLocale();
        EXPECT_EQ(std::atof("0.5"), 0.5);
    }
    EXPECT_EQ(MltSession::open(), session);
}

TEST(ProjectionQueries, findsTheEffectsOnAFrame)
{
    Projection edit = dissolve();
    edit.clips[1].filters.push_back({"early", "a", 0, 35, {}});
    edit.clips[1].filters.push_back({"off", "b", 0, 74, {{"disable", "1"}}});
    edit.clips[2].filters.push_back({"second", "c", 0, 49, {}});
    EXPECT_THAT(serviceNames(effectsAt(edit, 0)), ElementsAre("a"));
    EXPECT_THAT(serviceNames(effectsAt(edit, 35)), ElementsAre("a", "c"));
    EXPECT_THAT(serviceNames(effectsAt(edit, 36)), ElementsAre("c"));
    EXPECT_THAT(serviceNames(effectsAt(edit, 75)), IsEmpty());
    EXPECT_EQ(findEffect(edit, "second")->service, "c");
    EXPECT_EQ(findEffect(edit, "none"), nullptr);
}

} // namespace
} // namespace workbench
