#include "workbench/engine/worker/ExportJob.h"

#include "workbench/engine/protocol/TraceMarks.h"
#include "workbench/engine/worker/ExportPreset.h"
#include "workbench/engine/worker/graph/MltGraph.h"
#include "workbench/engine/worker/graph/MltSession.h"
#include "workbench/model/projection/ProjectionQueries.h"

#include <mlt++/Mlt.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace workbench
{

namespace
{

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kPoll{20};

// After the last frame a consumer has this long to say that it ended.
constexpr std::chrono::milliseconds kEndPatience{500};
constexpr std::chrono::milliseconds kBeginPatience{300};

/** What the framework's threads tell of a running consumer. */
struct Signals {
    std::atomic<int> frames{0};
    std::atomic<bool> failed{false};

    static void frameWritten(mlt_properties, void* self, mlt_event_data) { ++static_cast<Signals*>(self)->frames; }

    static void consumerFailed(mlt_properties, void* self, mlt_event_data)
    {
        static_cast<Signals*>(self)->failed = true;
    }
};

ExportResult failure(std::string message)
{
    return {ExportResult::Outcome::Failed, std::move(message)};
}

std::string sizeText(const ProjectedProfile& profile)
{
    return std::to_string(profile.width) + " x " + std::to_string(profile.height);
}

/** Why pictures of that size cannot be written; empty when they can. */
std::string refuseSize(const ExportPreset& preset, const ProjectedProfile& profile)
{
    const auto [low, high] = std::minmax(profile.width, profile.height);
    if (!preset.video || (low >= kSmallestSide && high <= preset.largestSide))
        return {};
    return "A " + preset.label + " cannot have pictures of " + sizeText(profile) + ", only sides of " +
           std::to_string(kSmallestSide) + " to " + std::to_string(preset.largestSide) + " pixels.";
}

/** Colour is kept for every second pixel only, so that sides have to be even. Says what was changed. */
std::string makeEven(ProjectedProfile& profile)
{
    const std::string before = sizeText(profile);
    profile.width &= ~1;
    profile.height &= ~1;
    const std::string after = sizeText(profile);
    return after == before ? std::string()
                           : "The film is " + after + " instead of " + before + ": its sides must be even.";
}

/** What encodes. */
struct Encoding {
    explicit Encoding(TraceMarks& told)
        : marks(told)
    {
    }

    TraceMarks& marks;
    Signals signals;
    std::unique_ptr<MltGraph> graph;
    std::unique_ptr<Mlt::Producer> range;
    std::unique_ptr<Mlt::Consumer> consumer;
    std::unique_ptr<Mlt::Event> written;
    std::unique_ptr<Mlt::Event> failed;
    int from = 0;
    int total = 0;
    int restarts = 0;

    bool start(const ExportPreset& preset, const std::string& path, int first, int last);

    /**
     * The consumer's thread ends at once when it looks at "running" before start() has set it. True when that seems to
     * have happened, and it was started once more.
     */
    bool restartIfNeverBegun(std::chrono::steady_clock::duration idle);
};

bool Encoding::start(const ExportPreset& preset, const std::string& path, int first, int last)
{
    from = first;
    total = last - first + 1;
    range.reset(graph->producer().cut(first, last));
    consumer = std::make_unique<Mlt::Consumer>(graph->profile(), "avformat", path.c_str());
    if (!range || !consumer->is_valid())
        return false;
    for (const auto& [name, value] : preset.properties)
        consumer->set(name.c_str(), value.c_str());
    consumer->set("real_time", -1);
    consumer->set("terminate_on_pause", 1);
    consumer->set("rescale", "bicubic");
    written.reset(consumer->listen("consumer-frame-show", &signals, Signals::frameWritten));
    failed.reset(consumer->listen("consumer-fatal-error", &signals, Signals::consumerFailed));
    range->seek(0);
    range->set_speed(1.0);
    consumer->connect(*range);
    return consumer->start() == 0;
}

bool Encoding::restartIfNeverBegun(std::chrono::steady_clock::duration idle)
{
    std::error_code ignored;
    const bool begun = signals.frames > 0 || fs::file_size(consumer->get("target"), ignored) > 0;
    const bool tooLate = consumer->is_stopped() || idle > kBeginPatience;
    if (begun || restarts >= 3 || !tooLate || marks.current() != 0)
        return false;
    ++restarts;
    consumer->stop();
    range->seek(0);
    range->set_speed(1.0);
    return consumer->start() == 0;
}

/** Sees it through to its end. */
ExportResult encode(Encoding& encoding, const ExportSettings& settings,
                    const std::function<void(int framesDone, int framesTotal)>& progress)
{
    const Signals& signals = encoding.signals;
    const int total = encoding.total;
    int told = -1;
    bool ended = false;
    Clock::time_point lastProgress = Clock::now();
    while (!signals.failed && !ended) {
        if (const int frames = std::min(total, signals.frames.load()); frames != told) {
            told = frames;
            lastProgress = Clock::now();
            encoding.marks.setFrame(encoding.from + frames);
            encoding.marks.setDeadline(TraceMarks::Work::Command, lastProgress + settings.stallTimeout);
            progress(frames, total);
        }
        std::this_thread::sleep_for(kPoll);
        const auto idle = Clock::now() - lastProgress;
        if (encoding.restartIfNeverBegun(idle))
            lastProgress = Clock::now();
        else
            ended = encoding.consumer->is_stopped() || (told == total && idle > kEndPatience);
    }
    encoding.consumer->stop();
    encoding.marks.setDeadline(TraceMarks::Work::Command, Clock::time_point::max());
    if (signals.failed || signals.frames < total)
        return failure("The encoder stopped after " + std::to_string(signals.frames) + " of " + std::to_string(total) +
                       " frames.");
    progress(total, total);
    return {};
}

} // namespace

ExportResult runExport(const std::shared_ptr<MltSession>& session, Projection projection,
                       const ExportSettings& settings, TraceMarks& marks,
                       const std::function<void(int framesDone, int framesTotal)>& progress)
{
    const std::vector<ExportPreset> presets = exportPresets(*session);
    const ExportPreset* preset = findExportPreset(presets, settings.path);
    if (!preset)
        return failure(inQuotes(fs::path(settings.path).filename().string()) +
                       " has no extension of a format that can be written.");
    if (std::string reason = refuseSize(*preset, projection.profile); !reason.empty())
        return failure(std::move(reason));
    std::string note = preset->video ? makeEven(projection.profile) : std::string();
    marks.setDeadline(TraceMarks::Work::Command, Clock::now() + settings.stallTimeout);
    Encoding encoding(marks);
    MltGraph::Options options;
    options.marks = &marks;
    options.bypassed = {settings.bypassed.begin(), settings.bypassed.end()};
    encoding.graph = MltGraph::build(session, projection, std::move(options));
    // Some come up only when a clip is reached.
    const auto missing = [&]() -> std::optional<std::string> {
        for (const EngineProblem& problem : encoding.graph->takeProblems())
            if (problem.kind == EngineProblem::Kind::MediaMissing)
                return problem.message;
            else
                note += (note.empty() ? "" : "\n") + problem.message;
        return std::nullopt;
    };
    if (const std::optional<std::string> problem = missing())
        return failure(*problem);

    const int last = std::max(0, encoding.graph->length() - 1);
    const int from = std::clamp(settings.from, 0, last);
    const int to = settings.to < 0 ? last : std::clamp(settings.to, from, last);
    if (!encoding.start(*preset, settings.path, from, to))
        return failure("The encoder cannot be started.");
    ExportResult result = encode(encoding, settings, progress);
    if (const std::optional<std::string> problem = missing())
        return failure(*problem);
    std::error_code unknown;
    if (result.outcome == ExportResult::Outcome::Done && (fs::file_size(settings.path, unknown) == 0 || unknown))
        return failure("Nothing was written; is the disk full?");
    if (result.outcome == ExportResult::Outcome::Done)
        result.message = std::move(note);
    return result;
}

} // namespace workbench
