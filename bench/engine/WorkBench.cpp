// What a person does with an edit of 720p: drags a slider, plays, has four films open; by way of a worker, and by a
// renderer in this process. The rows of memory come first: what ran in this process before would count.
#include "bench/engine/BenchEdit.h"
#include "workbench/engine/worker/RenderWorker.h"
#include "workbench/engine/worker/graph/MltSession.h"

#include <benchmark/benchmark.h>

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

namespace workbench
{
namespace
{

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr auto kPlayed = 4s;
constexpr int kFilms = 4;

/** Films of two seconds of moving picture and a tone; gone with the program. */
class Films
{
public:
    Films()
    {
        fs::create_directories(folder_);
        for (int i = 0; i < kFilms; ++i) {
            const std::string command =
                "ffmpeg -v error -nostdin -y -f lavfi -i testsrc2=s=1280x720:r=25:d=10 -f lavfi -i "
                "sine=440:r=48000:d=10 -g 12 -bf 0 -c:v libx264 -preset ultrafast -pix_fmt yuv420p -c:a aac '" +
                path(i) + "'";
            good_ = std::system(command.c_str()) == 0 && good_;
        }
    }

    ~Films()
    {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }

    Films(const Films&) = delete;
    Films& operator=(const Films&) = delete;

    bool good() const { return good_; }

    std::string path(int index) const { return folder_ / ("film" + std::to_string(index) + ".mp4"); }

private:
    fs::path folder_ = fs::temp_directory_path() / ("oribund-bench-" + std::to_string(getpid()));
    bool good_ = true;
};

const Films& films()
{
    static const Films made;
    return made;
}

/** Films over each other, all in view, each with so many light effects. */
Projection filmEdit(int count, int effects)
{
    Projection projection = colourEdit(0);
    for (int i = 0; i < count; ++i) {
        const std::string id = "film" + std::to_string(i);
        projection.clips.push_back({id, "", films().path(i), 0, kFrames - 1, {}, {}});
        const char* const light[] = {"brightness", "frei0r.brightness", "frei0r.saturat0r"};
        for (int effect = 0; effect < effects; ++effect)
            projection.clips.back().filters.push_back(
                {id + '-' + std::to_string(effect), light[effect % 3], 0, kFrames - 1, {}});
        ProjectedEntry entry;
        entry.kind = ProjectedEntry::Kind::Clip;
        entry.length = kFrames;
        entry.first = {id, 0, kFrames - 1};
        projection.tracks.push_back({id, "", ProjectedTrack::Hide::Nothing, {entry}});
        projection.transitions.push_back({id + "-mix", "mix", 0, i + 1, 0, 0, {{"sum", "1"}, {"always_active", "1"}}});
        projection.transitions.push_back(
            {id + "-over", "frei0r.cairoblend", 0, i + 1, 0, 0, {{"always_active", "1"}, {"0", "0.5"}}});
    }
    return projection;
}

/** The engine in this process, with the members that are used of the one that has a worker. */
class OwnEngine
{
public:
    explicit OwnEngine(EngineCallbacks callbacks)
        : renderer_(MltSession::open(), std::move(callbacks), {}, *marks_)
    {
    }

    void load(Projection projection)
    {
        renderer_.load(std::make_shared<const Projection>(std::move(projection)), {}, ++revision_);
    }

    std::uint64_t update(std::vector<PropertyUpdate> updates)
    {
        renderer_.update(std::move(updates), ++revision_);
        return revision_;
    }

    void requestFrame(int frame, int width, int height) { renderer_.request({frame, width, height}); }

    void play() { renderer_.setPlaying(true); }

    void pause() { renderer_.setPlaying(false); }

private:
    std::unique_ptr<TraceMarks> marks_ = TraceMarks::create();
    std::uint64_t revision_ = 0;
    RenderWorker renderer_;
};

class WorkerEngine : public Engine
{
public:
    explicit WorkerEngine(EngineCallbacks callbacks)
        : Engine(benchHost(), std::move(callbacks))
    {
    }
};

/** What a process has in memory, shared pages counted in parts; MiB. */
double memoryOf(const std::string& process)
{
    std::ifstream lines("/proc/" + process + "/smaps_rollup");
    for (std::string word; lines >> word;)
        if (double kilobytes = 0.0; word == "Pss:" && lines >> kilobytes)
            return kilobytes / 1024.0;
    return 0.0;
}

double memoryOfAll()
{
    double sum = memoryOf("self");
    for (const auto& thread : fs::directory_iterator("/proc/self/task")) {
        std::ifstream children(thread.path() / "children");
        for (std::string child; children >> child;)
            sum += memoryOf(child);
    }
    return sum;
}

/** Four films have been shown, from their beginning to their end. */
template <class AnyEngine>
void memory(benchmark::State& state)
{
    setenv("SDL_AUDIODRIVER", "dummy", 0);
    if (!films().good())
        return state.SkipWithError("ffmpeg makes no films");
    Latest latest;
    AnyEngine engine(latest.callbacks());
    engine.load(filmEdit(kFilms, 0));
    double most = 0.0;
    for (auto _ : state)
        for (int frame = 0; frame < kFrames; frame += 5) {
            engine.requestFrame(frame, kWidth, kHeight);
            if (!latest.wait(frame))
                return state.SkipWithError("no picture came");
            most = std::max(most, memoryOfAll());
        }
    state.counters["MiB"] = most;
}

BENCHMARK_TEMPLATE(memory, WorkerEngine)->Name("memoryWithWorker")->Iterations(1)->UseRealTime();
BENCHMARK_TEMPLATE(memory, OwnEngine)->Name("memoryInProcess")->Iterations(1)->UseRealTime();

/** The slider is moved as soon as the picture of its last place has come. */
template <class AnyEngine>
void drag(benchmark::State& state)
{
    if (!films().good())
        return state.SkipWithError("ffmpeg makes no films");
    Latest latest;
    AnyEngine engine(latest.callbacks());
    engine.load(filmEdit(1, 1));
    engine.requestFrame(50, kWidth, kHeight);
    latest.wait(50);
    int place = 0;
    for (auto _ : state) {
        place = (place + 1) % 100;
        const auto revision = engine.update({{"film0-0", "level", std::to_string(0.005 * (place + 50))}});
        engine.requestFrame(50, kWidth, kHeight);
        if (!latest.waitForRevision(revision))
            return state.SkipWithError("no picture came");
    }
    state.SetItemsProcessed(state.iterations()); // pictures a second
}

BENCHMARK_TEMPLATE(drag, WorkerEngine)->Name("dragWithWorker")->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(drag, OwnEngine)->Name("dragInProcess")->UseRealTime()->Unit(benchmark::kMillisecond);

/** Sound sets the pace, so that a picture is as far from its sound as it is from the beat. */
template <class AnyEngine>
void play(benchmark::State& state)
{
    setenv("SDL_AUDIODRIVER", "dummy", 0);
    if (!films().good())
        return state.SkipWithError("ffmpeg makes no films");
    Latest latest;
    AnyEngine engine(latest.callbacks());
    engine.load(filmEdit(1, 3));
    double pictures = 0.0;
    double apart = 0.0;
    for (auto _ : state) {
        engine.requestFrame(0, kWidth, kHeight);
        latest.wait(0);
        engine.play();
        std::this_thread::sleep_for(1s); // it takes a while to get going
        latest.takeArrivals();
        std::this_thread::sleep_for(kPlayed);
        const Latest::Arrivals arrivals = latest.takeArrivals();
        engine.pause();
        pictures = static_cast<double>(arrivals.size()) / std::chrono::duration<double>(kPlayed).count();
        double early = 1e9;
        double late = -1e9;
        for (const auto& [frame, when] : arrivals) {
            const double due = frame * 1000.0 / 25.0;
            const double came = std::chrono::duration<double, std::milli>(when - arrivals.front().second).count();
            early = std::min(early, came - due);
            late = std::max(late, came - due);
        }
        apart = arrivals.empty() ? -1.0 : late - early;
    }
    state.counters["picturesPerSecond"] = pictures;
    state.counters["msApart"] = apart;
}

BENCHMARK_TEMPLATE(play, WorkerEngine)->Name("playWithWorker")->Iterations(1)->UseRealTime();
BENCHMARK_TEMPLATE(play, OwnEngine)->Name("playInProcess")->Iterations(1)->UseRealTime();

} // namespace
} // namespace workbench
