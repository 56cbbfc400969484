// Tries every effect that is offered, at the ends of all that its controls can be set to, and prints which die, hang,
// give no picture, or sound that is no number. For developers: what it finds gets a working range in the overlay.
//
//     effect_round FILM [--size WxH] [--seconds LIMIT] [--chances COUNT] [--contained] [SERVICE...]
//
// A setting is tried twice: in a new graph, as when a project is opened, and by changing a running one, as when a
// slider is dragged. Each effect is in processes of its own; after a death the next one goes on behind the trial.
#include "tests/engine/round/EffectTrials.h"
#include "workbench/engine/worker/containment/Containment.h"
#include "workbench/engine/worker/graph/FrameRendering.h"
#include "workbench/engine/worker/graph/MltGraph.h"
#include "workbench/engine/worker/graph/MltSession.h"
#include "workbench/engine/worker/graph/ServiceFaults.h"
#include "workbench/model/projection/AllowList.h"

#include <mlt++/Mlt.h>

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <set>
#include <thread>

namespace workbench
{
namespace
{

using namespace std::chrono_literals;

constexpr int kLength = 50;
constexpr int kFrames = 3;
constexpr std::uint64_t kMemory = 3ULL << 30;

struct Options {
    std::string film;
    FrameSize size{320, 180};
    std::chrono::seconds limit{4};
    int chances = 2;
    bool contained = false;
    std::set<std::string> services;
};

/** What a child tells while it works; in memory that outlives it. */
struct Progress {
    std::atomic<int> trial{0};
    std::atomic<bool> live{false};
    std::atomic<int> steps{0};
};

Projection editWith(const Options& options, const std::string& service, const ProjectedProperties& properties)
{
    Projection edit;
    edit.profile = {options.size.width, options.size.height, 25, 1, 1, 1, 709, true};
    edit.length = kLength;
    edit.clips.push_back({"clip", "", options.film, 0, kLength - 1, {}, {}});
    edit.clips[0].filters.push_back({"effect", service, 0, kLength - 1, properties});
    ProjectedEntry entry;
    entry.kind = ProjectedEntry::Kind::Clip;
    entry.length = kLength;
    entry.first = {"clip", 0, kLength - 1};
    edit.tracks.push_back({"track", "", ProjectedTrack::Hide::Nothing, {entry}});
    return edit;
}

class Child
{
public:
    Child(const Options& options, const EffectDescription& effect, Progress& progress)
        : options_(options)
        , effect_(effect)
        , progress_(progress)
        , session_(MltSession::open())
    {
    }

    void run(const std::vector<EffectTrial>& trials)
    {
        for (int trial = progress_.trial; trial < static_cast<int>(trials.size()); ++trial) {
            if (!progress_.live) {
                graph_ = build(trials[trial].properties);
                render(trials[trial], "new", 0);
                progress_.live = true;
            }
            // From the defaults to the setting and back, over frames that were shown before.
            graph_ = build(trials.front().properties);
            render(trials.front(), "new", 0);
            apply(trials[trial].properties);
            render(trials[trial], "live", 1);
            apply(trials.front().properties);
            render(trials[trial], "back", 1);
            progress_.live = false;
            progress_.trial = trial + 1;
        }
    }

private:
    std::unique_ptr<MltGraph> build(const ProjectedProperties& properties)
    {
        MltGraph::Options options;
        options.former = std::move(graph_);
        auto graph = MltGraph::build(session_, editWith(options_, effect_.service, properties), std::move(options));
        for (const EngineProblem& problem : graph->takeProblems())
            complain("problem: " + problem.message);
        return graph;
    }

    void apply(const ProjectedProperties& properties)
    {
        for (const ProjectedProperty& property : properties)
            graph_->apply({"effect", property.name, property.value});
    }

    void render(const EffectTrial& trial, const char* how, int from)
    {
        const auto begun = std::chrono::steady_clock::now();
        for (int position = from; position < from + kFrames; ++position) {
            if (effect_.medium == EffectDescription::Medium::Video) {
                if (!renderFrame(graph_->producer(), position, options_.size))
                    complain("no picture: " + std::string(how) + ' ' + trial.what);
            } else if (!soundIsFinite(position)) {
                complain("sound is no number: " + std::string(how) + ' ' + trial.what);
            }
            ++progress_.steps;
        }
        for (Mlt::Service* const service : graph_->services())
            if (hasFault(*service))
                complain("does not work: " + std::string(how) + ' ' + trial.what);
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begun;
        if (taken > 2s)
            complain("slow: " + std::to_string(taken.count() / kFrames) + " s a frame, " + how + ' ' + trial.what);
    }

    bool soundIsFinite(int position)
    {
        graph_->producer().seek(position);
        const std::unique_ptr<Mlt::Frame> frame(graph_->producer().get_frame());
        mlt_audio_format format = mlt_audio_f32le;
        int frequency = 48000;
        int channels = 2;
        int samples = 1920;
        const auto* const data = static_cast<const float*>(frame->get_audio(format, frequency, channels, samples));
        for (int i = 0; data && i < samples * channels; ++i)
            if (!std::isfinite(data[i]))
                return false;
        return data != nullptr;
    }

    void complain(const std::string& text)
    {
        if (told_.insert(text.substr(0, text.find(':'))).second) {
            std::printf("%s: %s\n", effect_.service.c_str(), text.c_str());
            std::fflush(stdout);
        }
    }

    const Options& options_;
    const EffectDescription& effect_;
    Progress& progress_;
    std::shared_ptr<MltSession> session_;
    std::unique_ptr<MltGraph> graph_;
    std::set<std::string> told_; // each kind of complaint once
};

/** Empty when the child came to its end; else how it died. A child that makes no step for the limit is ended. */
std::string watch(pid_t child, const Progress& progress, std::chrono::seconds limit)
{
    int steps = -1;
    auto since = std::chrono::steady_clock::now();
    int status = 0;
    while (waitpid(child, &status, WNOHANG) == 0) {
        const auto now = std::chrono::steady_clock::now();
        if (progress.steps != steps) {
            steps = progress.steps;
            since = now;
        } else if (now - since > limit) {
            kill(child, SIGKILL);
            waitpid(child, &status, 0);
            return "hangs";
        }
        std::this_thread::sleep_for(2ms);
    }
    if (WIFSIGNALED(status))
        return std::string("dies of ") + strsignal(WTERMSIG(status));
    return WEXITSTATUS(status) == 0 ? "" : "ends the program with " + std::to_string(WEXITSTATUS(status));
}

/** How many trials ended a process. */
int tryEffect(const Options& options, const EffectDescription& effect)
{
    const std::vector<EffectTrial> trials = trialsOf(effect, kLength, options.chances);
    void* const shared = mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    auto& progress = *new (shared) Progress;
    int deaths = 0;
    while (progress.trial < static_cast<int>(trials.size())) {
        const pid_t child = fork();
        if (child == 0) {
            ContainmentRules rules;
            rules.readable = {options.film};
            rules.memoryLimit = kMemory;
            if (options.contained)
                contain(rules);
            Child(options, effect, progress).run(trials);
            std::_Exit(0);
        }
        const std::string death = watch(child, progress, options.limit);
        if (death.empty())
            break;
        ++deaths;
        const EffectTrial& trial = trials[static_cast<std::size_t>(progress.trial)];
        std::printf("%s: %s: %s %s\n", effect.service.c_str(), death.c_str(), progress.live ? "live" : "new",
                    trial.what.c_str());
        std::fflush(stdout);
        progress.trial += progress.live ? 1 : 0;
        progress.live = !progress.live;
    }
    munmap(shared, sizeof(Progress));
    return deaths;
}

int runRound(const Options& options)
{
    const auto session = MltSession::open();
    if (!session)
        return 2;
    const auto allowed = session->allowList();
    int deaths = 0;
    int tried = 0;
    for (const auto& effect : allowed->effects().all()) {
        if (!effect->blockedBecause.empty() ||
            (!options.services.empty() && !options.services.contains(effect->service)))
            continue;
        ++tried;
        deaths += tryEffect(options, *effect);
    }
    std::printf("%d effects, %d deaths\n", tried, deaths);
    return deaths > 0 ? 1 : 0;
}

Options parse(int argc, char** argv)
{
    Options options;
    options.film = argv[1];
    for (int i = 2; i < argc; ++i) {
        const std::string argument = argv[i];
        const char* const value = i + 1 < argc ? argv[i + 1] : "";
        if (argument == "--contained") {
            options.contained = true;
        } else if (argument == "--size") {
            options.size = {std::atoi(value), std::atoi(std::strchr(value, 'x') ? std::strchr(value, 'x') + 1 : "180")};
            ++i;
        } else if (argument == "--seconds") {
            options.limit = std::chrono::seconds(std::atoi(value));
            ++i;
        } else if (argument == "--chances") {
            options.chances = std::atoi(value);
            ++i;
        } else {
            options.services.insert(argument);
        }
    }
    return options;
}

} // namespace
} // namespace workbench

int main(int argc, char** argv)
{
    if (argc < 2 || argv[1][0] != '/') {
        std::puts(
            "effect_round /PATH/OF/FILM [--size WxH] [--seconds LIMIT] [--chances COUNT] [--contained] [SERVICE...]");
        return 2;
    }
    return workbench::runRound(workbench::parse(argc, argv));
}
