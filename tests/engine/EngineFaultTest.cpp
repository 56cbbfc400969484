#include "workbench/engine/client/Engine.h"

#include "tests/engine/EngineFixture.h"
#include "tests/engine/Workers.h"
#include "workbench/engine/protocol/TraceMarks.h"
#include "workbench/engine/worker/RenderWorker.h"

#include <gmock/gmock.h>

#include <csignal>
#include <cstdlib>
#include <future>

namespace workbench
{
namespace
{

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

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

TEST_F(EngineTest, AThreadThatIsStuckBetweenTwoPiecesOfWorkIsLate)
{
    const auto marks = TraceMarks::create();
    std::promise<void> letGo;
    EngineCallbacks callbacks = listener.callbacks();
    callbacks.frame = [&](const FrameImagePtr& frame) {
        listener.add(listener.frames, frame);
        letGo.get_future().wait();
    };
    RenderWorker worker(session, callbacks, {100ms, 100ms, false}, *marks);
    EXPECT_FALSE(marks->isAtWork());
    worker.load(std::make_shared<const Projection>(sampleEdit()), {}, 1);
    worker.request({3, 160, 90});
    ASSERT_TRUE(listener.waitForFrame(3, 1));
    EXPECT_FALSE(marks->isLate(TraceMarks::Clock::now()));
    EXPECT_TRUE(marks->isLate(TraceMarks::Clock::now() + 5s));
    letGo.set_value();
    for (int i = 0; i < 100 && marks->isAtWork(); ++i)
        std::this_thread::sleep_for(20ms);
    EXPECT_FALSE(marks->isAtWork());
}

TEST_F(EngineTest, withoutItsProgramItSaysSo)
{
    Engine engine(std::make_shared<EngineHost>("/no/such/program"), listener.callbacks());
    engine.load(sampleEdit());
    engine.requestFrame(0, 160, 90);
    ASSERT_TRUE(listener.wait([&] { return !listener.problems.empty(); }));
    EXPECT_THAT(listener.problems[0].message, testing::HasSubstr("No such file"));

    // To be installed again helps only where the program ends by itself.
    const auto toldBy = [](const char* program) {
        Listener heard;
        Engine other(std::make_shared<EngineHost>(program), heard.callbacks());
        other.load(sampleEdit());
        other.requestFrame(0, 160, 90);
        heard.wait([&] { return !heard.problems.empty(); });
        const std::lock_guard lock(heard.mutex);
        return heard.problems.empty() ? std::string() : heard.problems[0].message;
    };
    EXPECT_THAT(toldBy("/bin/false"), testing::HasSubstr("Install it again"));
    EXPECT_THAT(toldBy("/bin/true"), testing::HasSubstr("tried again"));
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

TEST(EffectProbe, tellsGoodFromBad)
{
    using Outcome = EffectProbeResult::Outcome;
    EXPECT_EQ(testEngine()->probeEffect("frei0r.brightness", {{"0", "0.7"}}).outcome, Outcome::Works);
    EXPECT_EQ(testEngine()->probeEffect("volume").outcome, Outcome::Works);
    EXPECT_EQ(testEngine()->probeEffect("no.such.effect").outcome, Outcome::Missing);
    EXPECT_EQ(testEngine()->probeEffect(kCrashing, {{"0", "1"}}).outcome, Outcome::Crashes);
    const EffectProbeResult hung = testEngine()->probeEffect(kHanging, {}, 1500ms);
    EXPECT_EQ(hung.outcome, Outcome::Hangs);
    EXPECT_THAT(hung.message, testing::HasSubstr("does not come back"));
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
