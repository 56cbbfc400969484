#include "workbench/engine/worker/Exporter.h"

#include "workbench/engine/worker/ExportPreset.h"
#include "workbench/engine/worker/graph/FilterTrace.h"
#include "workbench/engine/worker/graph/MltGraph.h"
#include "workbench/engine/worker/graph/MltSession.h"
#include "workbench/model/projection/ProjectionQueries.h"

#include <mlt++/Mlt.h>

#include <algorithm>
#include <filesystem>
#include <future>
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

/** What encodes. On the heap as a whole, because all of it is left behind when an effect never comes back. */
struct Encoding {
    FilterTrace trace;
    Signals signals;
    std::unique_ptr<MltGraph> graph;
    std::unique_ptr<Mlt::Producer> range;
    std::unique_ptr<Mlt::Consumer> consumer;
    std::unique_ptr<Mlt::Event> written;
    std::unique_ptr<Mlt::Event> failed;
    int total = 0;
    int restarts = 0;

    bool start(const ExportPreset& preset, const std::string& path, int from, int to);

    /**
     * The consumer's thread ends at once when it looks at "running" before start() has set it. True when that seems to
     * have happened, and it was started once more.
     */
    bool restartIfNeverBegun(std::chrono::steady_clock::duration idle);
};

bool Encoding::start(const ExportPreset& preset, const std::string& path, int from, int to)
{
    total = to - from + 1;
    range.reset(graph->producer().cut(from, to));
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
    if (begun || restarts >= 3 || !tooLate || !trace.current().empty())
        return false;
    ++restarts;
    consumer->stop();
    range->seek(0);
    range->set_speed(1.0);
    return consumer->start() == 0;
}

/** Stopping waits for the frames in work; true when it succeeded within the time. The encoding must not be touched
 * after a false. */
bool stopWithin(const std::shared_ptr<Encoding>& encoding, std::chrono::milliseconds patience)
{
    auto stopped = std::make_shared<std::promise<void>>();
    std::future<void> done = stopped->get_future();
    std::thread stopper([encoding, stopped] {
        encoding->consumer->stop();
        stopped->set_value();
    });
    if (done.wait_for(patience) == std::future_status::ready) {
        stopper.join();
        return true;
    }
    stopper.detach();
    MltSession::noteAbandonedThread();
    return false;
}

} // namespace

/** One export, on its thread. */
struct Exporter::Job {
    std::shared_ptr<MltSession> session;
    Projection projection;
    ExportSettings settings;
    ExportCallbacks callbacks;
    std::atomic<bool> cancelled{false};
    std::atomic<bool> hasEnded{false};

    void run();
    ExportResult perform();
    ExportResult encode(const std::shared_ptr<Encoding>& encoding);
    std::string describeStall(const FilterTrace& trace) const;
};

void Exporter::Job::run()
{
    const ExportResult result = perform();
    if (callbacks.finished)
        callbacks.finished(result);
    hasEnded = true;
}

ExportResult Exporter::Job::perform()
{
    const std::vector<ExportPreset> presets = exportPresets(*session);
    const ExportPreset* preset = findExportPreset(presets, settings.path);
    if (!preset)
        return failure(inQuotes(fs::path(settings.path).filename().string()) +
                       " has no extension of a format that can be written.");
    if (std::string reason = refuseSize(*preset, projection.profile); !reason.empty())
        return failure(std::move(reason));
    std::string note = preset->video ? makeEven(projection.profile) : std::string();
    const auto encoding = std::make_shared<Encoding>();
    MltGraph::Options options;
    options.trace = &encoding->trace;
    encoding->graph = MltGraph::build(session, projection, std::move(options));
    for (const EngineProblem& problem : encoding->graph->problems())
        if (problem.kind == EngineProblem::Kind::MediaMissing)
            return failure(problem.message);
        else
            note += (note.empty() ? "" : "\n") + problem.message;

    const int last = std::max(0, encoding->graph->length() - 1);
    const int from = std::clamp(settings.from, 0, last);
    const int to = settings.to < 0 ? last : std::clamp(settings.to, from, last);
    if (!encoding->start(*preset, settings.path, from, to))
        return failure("The encoder cannot be started.");
    ExportResult result = encode(encoding);
    std::error_code unknown;
    if (result.outcome == ExportResult::Outcome::Done && (fs::file_size(settings.path, unknown) == 0 || unknown))
        return failure("Nothing was written; is the disk full?");
    if (result.outcome == ExportResult::Outcome::Done)
        result.message = std::move(note);
    return result;
}

ExportResult Exporter::Job::encode(const std::shared_ptr<Encoding>& encoding)
{
    const Signals& signals = encoding->signals;
    const int total = encoding->total;
    int told = -1;
    bool stalled = false;
    bool ended = false;
    Clock::time_point lastProgress = Clock::now();
    while (!cancelled && !signals.failed && !stalled && !ended) {
        std::this_thread::sleep_for(kPoll);
        if (const int frames = std::min(total, signals.frames.load()); frames != told) {
            told = frames;
            lastProgress = Clock::now();
            if (callbacks.progress)
                callbacks.progress(frames, total);
        }
        const auto idle = Clock::now() - lastProgress;
        if (encoding->restartIfNeverBegun(idle)) {
            lastProgress = Clock::now();
            continue;
        }
        ended = encoding->consumer->is_stopped() || (told == total && idle > kEndPatience);
        stalled = !ended && idle > settings.stallTimeout;
    }
    const std::string stall = stalled ? describeStall(encoding->trace) : std::string();
    stopWithin(encoding, stalled ? std::chrono::milliseconds(100) : settings.stallTimeout);
    if (stalled)
        return failure(stall);
    if (cancelled)
        return {ExportResult::Outcome::Cancelled, "The export was cancelled."};
    if (signals.failed || signals.frames < total)
        return failure("The encoder stopped after " + std::to_string(signals.frames) + " of " + std::to_string(total) +
                       " frames.");
    if (callbacks.progress)
        callbacks.progress(total, total);
    return {};
}

std::string Exporter::Job::describeStall(const FilterTrace& trace) const
{
    const ProjectedFilter* effect = findEffect(projection, trace.current());
    return effect ? "The effect " + inQuotes(effect->service) + " does not come back."
                  : "No frame came for a long time.";
}

Exporter::Exporter(std::shared_ptr<MltSession> session)
    : session_(std::move(session))
{
}

Exporter::~Exporter()
{
    cancel();
    wait();
}

bool Exporter::start(Projection projection, ExportSettings settings, ExportCallbacks callbacks)
{
    if (running())
        return false;
    wait();
    job_ = std::make_shared<Job>();
    job_->session = session_;
    job_->projection = std::move(projection);
    job_->settings = std::move(settings);
    job_->callbacks = std::move(callbacks);
    thread_ = std::thread([job = job_] { job->run(); });
    return true;
}

void Exporter::cancel()
{
    if (job_)
        job_->cancelled = true;
}

bool Exporter::running() const
{
    return job_ && !job_->hasEnded;
}

void Exporter::wait()
{
    if (thread_.joinable())
        thread_.join();
}

} // namespace workbench
