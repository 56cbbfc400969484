// Workers that are killed at random moments, whatever they are doing: no picture is wrong, nothing is lost, nothing is
// blamed, nothing grows. A developer has more of them killed than the suite does: ORIBUND_KILLS=500, and another seed
// by
// --gtest_random_seed.
#include "tests/engine/EngineFixture.h"
#include "tests/engine/Workers.h"
#include "workbench/engine/client/Exporter.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <map>
#include <random>
#include <sstream>
#include <thread>

namespace workbench
{
namespace
{

constexpr std::array kFramesAsked{3, 20, 41, 70};
constexpr std::array kLevels{"0.2", "0.5", "0.8"};

int killsWanted()
{
    const char* const wanted = std::getenv("ORIBUND_KILLS");
    return wanted ? std::atoi(wanted) : 20;
}

/** Kills one worker after the other, which one and when is left to chance. */
class Killer
{
public:
    Killer(unsigned seed, int most)
        : random_(seed)
        , thread_([this, most] { run(most); })
    {
    }

    ~Killer()
    {
        stop_ = true;
        thread_.join();
    }

    Killer(const Killer&) = delete;
    Killer& operator=(const Killer&) = delete;

    int killed() const { return killed_; }

    void rest(bool resting) { resting_ = resting; }

private:
    void run(int most)
    {
        while (!stop_ && killed_ < most) {
            std::this_thread::sleep_for(std::chrono::milliseconds(random_() % 700));
            if (resting_)
                continue;
            const std::vector<pid_t> found = runningWorkers();
            if (!found.empty() && kill(found[random_() % found.size()], SIGKILL) == 0)
                ++killed_;
        }
    }

    /** What the test starts besides, such as ffmpeg, is no worker. */
    static std::vector<pid_t> runningWorkers()
    {
        std::vector<pid_t> found;
        for (const pid_t child : workers()) {
            std::string name;
            std::ifstream("/proc/" + std::to_string(child) + "/comm") >> name;
            if (name.starts_with("oribund-engine"))
                found.push_back(child);
        }
        return found;
    }

    std::mt19937 random_;
    std::atomic<bool> stop_{false};
    std::atomic<bool> resting_{false};
    std::atomic<int> killed_{0};
    std::thread thread_;
};

class KilledWorkers : public EngineTest
{
protected:
    void SetUp() override { setenv("SDL_AUDIODRIVER", "dummy", 1); }

    /** As the window does, which keeps the last picture alone: those that are kept take the room of others. */
    EngineCallbacks keepingTheLast()
    {
        EngineCallbacks callbacks = listener.callbacks();
        callbacks.frame = [this](FrameImagePtr frame) {
            {
                const std::lock_guard lock(listener.mutex);
                listener.frames.assign(1, std::move(frame));
            }
            listener.changed.notify_all();
        };
        return callbacks;
    }

    static Projection editAt(const char* level) { return sampleEdit("frei0r.brightness", {{"0", level}}); }

    /** Asks again where a worker died with the question, as the window does at the user's next step. */
    FrameImagePtr pictureAt(Engine& engine, int frame, std::uint64_t revision)
    {
        const auto came = [&] {
            return !listener.frames.empty() && listener.frames.back()->frame == frame &&
                   listener.frames.back()->revision == revision;
        };
        for (int attempt = 0; attempt < 4; ++attempt) {
            engine.requestFrame(frame, 320, 180);
            if (listener.wait(came, 5s)) {
                const std::lock_guard lock(listener.mutex);
                return listener.frames.back();
            }
        }
        return nullptr;
    }

    void learnPictures(Engine& engine)
    {
        for (const char* level : kLevels) {
            const auto revision = engine.load(editAt(level));
            for (const int frame : kFramesAsked) {
                const FrameImagePtr picture = pictureAt(engine, frame, revision);
                ASSERT_TRUE(picture);
                pictures[{level, frame}].assign(picture->rgba.begin(), picture->rgba.end());
                forget();
            }
        }
    }

    void forget()
    {
        const std::lock_guard lock(listener.mutex);
        listener.frames.clear();
        listener.positions.clear();
        listener.playing.clear();
    }

    std::map<std::pair<std::string, int>, std::vector<std::uint8_t>> pictures;
};

/** An export after the other, each into the same file. */
class Exports
{
public:
    explicit Exports(Projection edit)
        : edit_(std::move(edit))
    {
        finish();
        expected_ = framesOf(path_);
        EXPECT_EQ(expected_.size(), static_cast<std::size_t>(kSampleFrames));
    }

    /** Begins the next one once the last has ended. */
    void keepBusy()
    {
        if (!exporter_.running()) {
            check();
            start();
        }
    }

    /** One that nobody disturbs. */
    void finish()
    {
        exporter_.wait();
        check();
        start();
        exporter_.wait();
        EXPECT_EQ(result_.outcome, ExportResult::Outcome::Done) << result_.message;
    }

    int whole() const { return whole_; }

    int stopped() const { return stopped_; }

private:
    void start()
    {
        ExportCallbacks callbacks;
        callbacks.finished = [this](const ExportResult& result) { result_ = result; };
        EXPECT_TRUE(exporter_.start(edit_, {path_}, callbacks));
        started_ = true;
    }

    void check()
    {
        if (!std::exchange(started_, false))
            return;
        if (result_.outcome == ExportResult::Outcome::Done) {
            ++whole_;
            EXPECT_EQ(result_.message, "");
            EXPECT_TRUE(expected_.empty() || framesOf(path_) == expected_) << "a wrong frame in export " << whole_;
        } else {
            ++stopped_;
            EXPECT_FALSE(result_.message.empty());
            EXPECT_THAT(result_.message, testing::Not(testing::HasSubstr("ightness"))) << "an effect is blamed";
        }
    }

    /** A checksum of each picture. */
    static std::vector<std::string> framesOf(const std::string& file)
    {
        const std::string sums = file + ".sums";
        const std::string command = "ffmpeg -v error -nostdin -y -i '" + file + "' -an -f framemd5 '" + sums + "'";
        EXPECT_EQ(std::system(command.c_str()), 0);
        std::vector<std::string> frames;
        std::ifstream lines(sums);
        for (std::string line; std::getline(lines, line);)
            if (!line.empty() && line[0] != '#')
                frames.push_back(line.substr(line.rfind(' ') + 1));
        return frames;
    }

    Projection edit_;
    std::string path_ = (SampleMedia::folder() / "killed.mp4").string();
    std::vector<std::string> expected_;
    ExportResult result_;
    bool started_ = false;
    int whole_ = 0;
    int stopped_ = 0;
    Exporter exporter_{testEngine()}; // last: its thread tells the result
};

long residentPages()
{
    std::ifstream memory("/proc/self/statm");
    long all = 0;
    long resident = 0;
    memory >> all >> resident;
    return resident;
}

TEST_F(KilledWorkers, CostAPictureAndNoWork)
{
    const auto seed = static_cast<unsigned>(testing::UnitTest::GetInstance()->random_seed());
    std::mt19937 random(seed);
    const auto any = [&random](const auto& of) { return of[random() % of.size()]; };
    Engine engine(testEngine(), keepingTheLast());
    learnPictures(engine);
    Exports exports(editAt("0.8"));
    const MediaInfo media = *testEngine()->probeMedia(SampleMedia::clip()).info;
    const std::string clip = SampleMedia::clip();

    const int most = killsWanted();
    const char* level = kLevels[0];
    auto revision = engine.load(editAt(level));
    long settled = 0;
    {
        Killer killer(seed, most);
        for (int act = 0; killer.killed() < most; ++act) {
            SCOPED_TRACE(testing::Message() << "act " << act << " of seed " << seed);
            exports.keepBusy();
            switch (random() % 4) {
            case 0:
                revision = engine.load(editAt(level = any(kLevels)));
                break;
            case 1:
                revision = engine.update({{kSampleEffect, "0", level = any(kLevels)}});
                break;
            case 2:
                engine.play();
                std::this_thread::sleep_for(std::chrono::milliseconds(random() % 600));
                engine.pause();
                break;
            default:
                if (const auto found = testEngine()->probeMedia(clip); found.info)
                    EXPECT_EQ(found.info->frames, media.frames);
                else
                    EXPECT_FALSE(found.problem.empty());
            }
            const int frame = any(kFramesAsked);
            FrameImagePtr picture = pictureAt(engine, frame, revision);
            if (!picture) { // on a busy machine each may be killed before it has shown anything
                killer.rest(true);
                picture = pictureAt(engine, frame, revision);
                killer.rest(false);
            }
            ASSERT_TRUE(picture) << "no picture came after " << killer.killed() << ", the last that was told: "
                                 << (listener.problems.empty() ? "nothing" : listener.problems.back().message);
            ASSERT_TRUE(std::ranges::equal(picture->rgba, pictures[{level, frame}]))
                << "frame " << frame << " at " << level;
            forget();
            if (settled == 0 && killer.killed() >= most / 4)
                settled = residentPages();
        }
    }
    exports.finish();
    EXPECT_TRUE(testEngine()->probeMedia(clip).info);
    const long grown = residentPages() - settled;
#if !defined(__SANITIZE_ADDRESS__) // which keeps for a while what is freed
    EXPECT_LT(grown, 4096) << "pages";
#endif
    EXPECT_THAT(engine.leftOut(), testing::IsEmpty());
    for (const EngineProblem& problem : listener.problems)
        EXPECT_EQ(problem.kind, EngineProblem::Kind::EngineEnded) << problem.message;
    std::printf("%d killed, %zu told; exports: %d whole, %d stopped; %ld pages more; %zu files open\n", most,
                listener.problems.size(), exports.whole(), exports.stopped(), grown, openFiles());
}

} // namespace
} // namespace workbench
