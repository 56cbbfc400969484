#include "workbench/engine/client/Exporter.h"

#include "workbench/engine/client/EngineHost.h"
#include "workbench/engine/client/EngineProcess.h"
#include "workbench/engine/client/WorkerEndText.h"
#include "workbench/model/projection/ProjectionQueries.h"
#include "workbench/system/Descriptor.h"

#include <fcntl.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string>
#include <utility>

namespace workbench
{

namespace
{

/** What an export may read is what the edit is made of, and all that it may write is its file. */
ContainmentRules rulesFor(const Projection& projection, const ExportSettings& settings)
{
    ContainmentRules rules;
    rules.readable = placesOf(projection);
    rules.writable = {settings.path};
    return rules;
}

/** A worker can write a file, but make none. An errno; 0 when it is there. */
int makeFile(const std::string& path)
{
    const Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666));
    return file ? 0 : errno;
}

ExportResult failure(std::string message)
{
    return {ExportResult::Outcome::Failed, std::move(message)};
}

} // namespace

/** One export, on its thread. */
struct Exporter::Job {
    std::shared_ptr<EngineHost> host;
    Projection projection;
    ExportSettings settings;
    ExportCallbacks callbacks;
    std::atomic<bool> cancelled{false};
    std::atomic<bool> hasEnded{false};

    void run();
    ExportResult perform();
    ExportResult follow(EngineProcess& worker);
    ExportResult judge(EngineProcess& worker, int done, int total) const;
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
    if (const int error = makeFile(settings.path))
        return failure(inQuotes(std::filesystem::path(settings.path).filename().string()) +
                       " cannot be written: " + std::strerror(error) + '.');
    std::string problem;
    const std::unique_ptr<EngineProcess> worker = host->start(rulesFor(projection, settings), {}, problem);
    if (!worker)
        return failure(std::move(problem));
    worker->send(request::StartExport{projection, settings});
    return follow(*worker);
}

ExportResult Exporter::Job::follow(EngineProcess& worker)
{
    constexpr std::chrono::milliseconds kPoll{50};
    int done = 0;
    int total = 0;
    while (!cancelled && !worker.hasEnded()) {
        const std::optional<Event> event = worker.receive(kPoll);
        if (!event)
            continue;
        if (const auto* finished = std::get_if<event::ExportFinished>(&*event))
            return finished->result;
        if (const auto* progress = std::get_if<event::ExportProgress>(&*event)) {
            done = std::max(done, progress->done);
            total = progress->total;
            if (callbacks.progress)
                callbacks.progress(done, total);
        }
    }
    // The worker has no way to stop half-way but to be ended.
    if (cancelled)
        return {ExportResult::Outcome::Cancelled, "The export was cancelled."};
    return judge(worker, done, total);
}

ExportResult Exporter::Job::judge(EngineProcess& worker, int done, int total) const
{
    const auto ready = worker.ready();
    const WorkerEnd end = worker.finish();
    if (!end.wasReady)
        return failure(EngineProcess::describeStart(ready, end));
    std::string message;
    if (total > 0)
        message = "It stopped after " + std::to_string(done) + " of " + std::to_string(total) + " frames. ";
    message += describe(end, projection).message;
    const bool byChance = end.way == WorkerEnd::Way::Ended || end.way == WorkerEnd::Way::Silent;
    if (effectToBlame(end, projection))
        message += " Change its settings or switch it off, then export again.";
    else if (byChance)
        message += " Nothing of the edit is lost: export again.";
    return failure(message);
}

Exporter::Exporter(std::shared_ptr<EngineHost> host)
    : host_(std::move(host))
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
    job_->host = host_;
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
