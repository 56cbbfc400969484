#include "workbench/engine/client/Engine.h"

#include "tests/engine/SampleMedia.h"
#include "workbench/engine/protocol/TraceMarks.h"
#include "workbench/engine/worker/graph/FrameRendering.h"
#include "workbench/engine/worker/graph/MltGraph.h"
#include "workbench/engine/worker/graph/MltSession.h"
#include "workbench/model/projection/ProjectionQueries.h"

#include <gmock/gmock.h>
#include <mlt++/Mlt.h>

#include <atomic>
#include <clocale>
#include <condition_variable>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <list>
#include <mutex>
#include <set>

namespace workbench
{
namespace
{

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

/** Collects what an engine tells. */
struct Listener {
    std::mutex mutex;
    std::condition_variable changed;
    std::vector<FrameImagePtr> frames;
    std::vector<int> positions;
    std::vector<EngineProblem> problems;
    std::vector<bool> playing;

    EngineCallbacks callbacks()
    {
        return {[this](FrameImagePtr frame) { add(frames, std::move(frame)); },
                [this](int position) { add(positions, position); }, [this](bool is) { add(playing, is); },
                [this](const EngineProblem& problem) { add(problems, problem); }};
    }

    template <class T, class V>
    void add(std::vector<T>& to, V value)
    {
        {
            const std::lock_guard lock(mutex);
            to.push_back(std::move(value));
        }
        changed.notify_all();
    }

    template <class Condition>
    bool wait(Condition&& condition, std::chrono::milliseconds limit = 20s)
    {
        std::unique_lock lock(mutex);
        return changed.wait_for(lock, limit, condition);
    }

    bool waitForFrame(int frame, std::uint64_t revision)
    {
        return wait(
            [&] { return !frames.empty() && frames.back()->frame == frame && frames.back()->revision == revision; });
    }
};

int brightnessAt(const FrameImage& image)
{
    const std::uint8_t* pixel = image.pixel(image.width / 2, image.height / 2);
    return pixel[0] + pixel[1] + pixel[2];
}

std::size_t openFiles()
{
    return static_cast<std::size_t>(std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()));
}

std::vector<pid_t> workers()
{
    std::vector<pid_t> found;
    for (const auto& thread : fs::directory_iterator("/proc/self/task")) {
        std::ifstream children(thread.path() / "children");
        for (pid_t child = 0; children >> child;)
            found.push_back(child);
    }
    return found;
}

/** To the processes that this one has started, from outside. */
void sendToWorkers(int signal)
{
    for (const pid_t worker : workers())
        kill(worker, signal);
}

void killWorkers()
{
    sendToWorkers(SIGKILL);
}

testing::Matcher<const EngineProblem&> crashOf(const std::string& effect)
{
    return testing::AllOf(testing::Field(&EngineProblem::kind, EngineProblem::Kind::EffectCrashed),
                          testing::Field(&EngineProblem::subject, effect),
                          testing::Field(&EngineProblem::message, testing::HasSubstr(kCrashing)));
}

class EngineTest : public testing::Test
{
protected:
    std::shared_ptr<MltSession> session = MltSession::open(); // for graphs in this process
    Listener listener;
};

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

TEST_F(EngineTest, aHungEffectIsNamedAndBypassed)
{
    Projection edit = sampleEdit("frei0r.brightness", {{"0", "0.9"}});
    edit.clips[1].filters.push_back({"bad", kHanging, 0, 74, {}, "Slow (2 of 2)"});
    EngineOptions options;
    options.frameTimeout = 400ms;
    const auto host = testEngine();
    const auto begin = std::chrono::steady_clock::now();
    {
        Engine engine(host, listener.callbacks(), options);
        const auto revision = engine.load(edit);
        engine.requestFrame(5, 320, 180);
        EXPECT_LT(std::chrono::steady_clock::now() - begin, 200ms); // nobody waits
        ASSERT_TRUE(listener.waitForFrame(5, revision));
        ASSERT_EQ(listener.problems.size(), 1U);
        EXPECT_EQ(listener.problems[0].kind, EngineProblem::Kind::EffectHung);
        EXPECT_EQ(listener.problems[0].subject, "bad");
        EXPECT_THAT(listener.problems[0].message,
                    testing::HasSubstr("\"Slow (2 of 2)\" did not answer at 00:00:00:05."));
        EXPECT_THAT(engine.leftOut(), ElementsAre(LeftOutEffect{"bad", true, false}));
        EXPECT_THAT(listener.problems[0].effects, ElementsAre("frei0r.brightness", kHanging));

        const auto next = engine.update({{kSampleEffect, "0", "0.2"}});
        const int before = brightnessAt(*listener.frames.back());
        engine.requestFrame(6, 320, 180);
        ASSERT_TRUE(listener.waitForFrame(6, next)); // life goes on
        EXPECT_LT(brightnessAt(*listener.frames.back()), before);
    }
}

TEST_F(EngineTest, anEffectThatHangsWhilePlayingIsBypassed)
{
    setenv("SDL_AUDIODRIVER", "dummy", 1);
    Projection edit = sampleEdit(kHanging, {});
    EngineOptions options;
    options.frameTimeout = 500ms;
    Engine engine(testEngine(), listener.callbacks(), options);
    engine.load(edit);
    engine.requestFrame(0, 160, 90);
    engine.play();
    ASSERT_TRUE(listener.wait([&] { return !listener.problems.empty(); }));
    EXPECT_EQ(listener.problems[0].subject, kSampleEffect);
    EXPECT_TRUE(listener.wait([&] { return !listener.positions.empty() && listener.positions.back() >= 40; }));
}

TEST_F(EngineTest, aCrashingEffectEndsOnlyItsWorkerAndIsTriedThreeTimes)
{
    Projection edit = sampleEdit();
    edit.clips[1].filters.push_back({"bad", kCrashing, 0, 74, {{"0", "0.9"}}});
    Engine engine(testEngine(), listener.callbacks());
    auto revision = engine.load(edit);
    engine.requestFrame(5, 320, 180);
    ASSERT_TRUE(listener.waitForFrame(5, revision));
    EXPECT_THAT(listener.problems, ElementsAre(crashOf("bad")));

    // Another setting may do; what is done to others tries it no further.
    engine.update({{"another", "0", "0.5"}});
    revision = engine.update({{"bad", "0", "0.8"}});
    engine.requestFrame(6, 320, 180);
    ASSERT_TRUE(listener.waitForFrame(6, revision));
    EXPECT_EQ(listener.problems.size(), 2U);
    edit.clips[1].filters.back().properties.front().value = "0.7";
    revision = engine.load(edit);
    engine.requestFrame(7, 320, 180);
    ASSERT_TRUE(listener.waitForFrame(7, revision));
    EXPECT_EQ(listener.problems.size(), 3U);
    revision = engine.update({{"bad", "0", "0.6"}});
    engine.requestFrame(8, 320, 180);
    ASSERT_TRUE(listener.waitForFrame(8, revision));
    EXPECT_EQ(listener.problems.size(), 3U) << "three times are enough";
    EXPECT_THAT(engine.leftOut(), ElementsAre(LeftOutEffect{"bad", false, true}));
    engine.retryEffects("bad");
    EXPECT_THAT(engine.leftOut(), ElementsAre());
    EXPECT_TRUE(listener.wait([&] { return listener.problems.size() == 4; }));
}

TEST_F(EngineTest, aWorkerThatIsKilledIsReplacedAndPlayingGoesOn)
{
    Engine engine(testEngine(), listener.callbacks());
    engine.load(sampleEdit());
    const auto revision = engine.update({});
    engine.requestFrame(10, 160, 90);
    ASSERT_TRUE(listener.waitForFrame(10, revision));
    const FrameImagePtr expected = listener.frames.back();
    const std::size_t open = openFiles();
    for (int i = 0; i < 4; ++i) {
        killWorkers();
        engine.requestFrame(10, 160, 90);
        ASSERT_TRUE(listener.wait([&] { return listener.frames.size() > static_cast<std::size_t>(i) + 1; }));
        EXPECT_EQ(listener.frames.back()->rgba, expected->rgba);
    }
    {
        const std::lock_guard lock(listener.mutex);
        listener.frames.clear();
    }
    EXPECT_LE(openFiles(), open + 1) << "that of the picture from the first worker";
    engine.requestFrame(0, 160, 90);
    engine.play();
    ASSERT_TRUE(listener.wait([&] { return !listener.positions.empty() && listener.positions.back() > 5; }));
    killWorkers();
    EXPECT_TRUE(listener.wait([&] { return listener.positions.back() > 40; }));
    for (const EngineProblem& problem : listener.problems)
        EXPECT_EQ(problem.kind, EngineProblem::Kind::EngineEnded) << "nobody is blamed: " << problem.message;
}

TEST_F(EngineTest, aWorkerThatIsStoppedWhileItHasNothingToDoIsReplaced)
{
    setenv("SDL_AUDIODRIVER", "dummy", 1);
    Engine engine(testEngine(), listener.callbacks());
    const auto revision = engine.load(sampleEdit());
    engine.requestFrame(10, 160, 90);
    ASSERT_TRUE(listener.waitForFrame(10, revision));
    std::this_thread::sleep_for(3500ms); // to be left alone for long is no fault
    sendToWorkers(SIGSTOP);
    engine.requestFrame(20, 160, 90);
    engine.play();
    engine.pause();
    ASSERT_TRUE(listener.waitForFrame(20, revision));
    ASSERT_EQ(listener.problems.size(), 1U);
    EXPECT_EQ(listener.problems[0].kind, EngineProblem::Kind::EngineEnded);
    EXPECT_THAT(listener.positions, IsEmpty());

    // One that is stopped while it plays is replaced, too, and the next one plays on.
    engine.play();
    ASSERT_TRUE(listener.wait([&] { return !listener.positions.empty(); }));
    sendToWorkers(SIGSTOP);
    ASSERT_TRUE(listener.wait([&] { return listener.problems.size() == 2; }));
    const std::size_t before = listener.positions.size();
    ASSERT_TRUE(listener.wait([&] { return listener.positions.size() > before; }));
    // Pausing is told where only the worker that is gone could have told it.
    sendToWorkers(SIGSTOP);
    engine.pause();
    EXPECT_TRUE(listener.wait([&] { return !listener.playing.back(); }));
}

TEST_F(EngineTest, withoutItsProgramItSaysSo)
{
    Engine engine(std::make_shared<EngineHost>("/no/such/program"), listener.callbacks());
    engine.load(sampleEdit());
    engine.requestFrame(0, 160, 90);
    ASSERT_TRUE(listener.wait([&] { return !listener.problems.empty(); }));
    EXPECT_THAT(listener.problems[0].message, testing::HasSubstr("No such file"));
}

TEST_F(EngineTest, destroyingItInTheMiddleOfEverythingIsSafe)
{
    setenv("SDL_AUDIODRIVER", "dummy", 1);
    for (int i = 0; i < 5; ++i) {
        Engine engine(testEngine(), listener.callbacks());
        engine.load(sampleEdit("frei0r.brightness", {{"0", "0.5"}}));
        engine.requestFrame(i * 10, 320, 180);
        if (i % 2 == 0)
            engine.play();
        std::this_thread::sleep_for(std::chrono::milliseconds(20 * i));
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

TEST(EffectProbe, tellsGoodFromBad)
{
    using Outcome = EffectProbeResult::Outcome;
    EXPECT_EQ(testEngine()->probeEffect("frei0r.brightness", {{"0", "0.7"}}).outcome, Outcome::Works);
    EXPECT_EQ(testEngine()->probeEffect("volume").outcome, Outcome::Works);
    EXPECT_EQ(testEngine()->probeEffect("no.such.effect").outcome, Outcome::Missing);
    EXPECT_EQ(testEngine()->probeEffect(kCrashing, {{"0", "1"}}).outcome, Outcome::Crashes);
    const EffectProbeResult hung = testEngine()->probeEffect(kHanging, {}, 1500ms);
    EXPECT_EQ(hung.outcome, Outcome::Hangs);
    EXPECT_THAT(hung.message, testing::HasSubstr(kHanging));
}

TEST(EffectProbe, nothingIsBlamedForAWorkerThatWasEndedBefore)
{
    for (const int signal : {SIGKILL, SIGSTOP}) {
        ASSERT_TRUE(testEngine()->probeEffect("frei0r.brightness").works());
        ASSERT_FALSE(workers().empty());
        sendToWorkers(signal);
        EXPECT_EQ(testEngine()->probeEffect("frei0r.brightness").message, "");
    }
    killWorkers();
    for (int i = 0; i < 500 && !workers().empty(); ++i)
        std::this_thread::sleep_for(10ms);
    EXPECT_THAT(workers(), IsEmpty()) << "reaped while nobody asks";
}

} // namespace
} // namespace workbench
