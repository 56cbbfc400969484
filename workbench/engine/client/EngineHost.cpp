#include "workbench/engine/client/EngineHost.h"

#include "workbench/engine/client/EngineProcess.h"
#include "workbench/model/projection/ProjectionQueries.h"

#include <algorithm>
#include <filesystem>
#include <optional>

namespace workbench
{

namespace
{

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kReadPatience{20};
constexpr std::chrono::milliseconds kLook{100}; // how late it may be noticed that one has ended

// Media may lie on a disk that has to wake up, or at the other end of a slow line.
constexpr std::chrono::seconds kMediaPatience{60};

std::string folderOf(const std::string& path)
{
    return fs::path(path).parent_path().string();
}

} // namespace

/** The worker that is asked, and what it takes to have one. */
class EngineHost::Prober
{
public:
    explicit Prober(const std::string& program)
        : program_(program)
    {
    }

    /** An answer, or why there is none. */
    template <class Answer>
    struct Asked {
        std::optional<Answer> answer;
        std::string problem; ///< why it could not be asked at all
        bool died = false;   ///< of what it was asked; otherwise it took too long
    };

    /** Asks one that can read this folder, if any. What ends one for another reason than the request is not told. */
    template <class Answer>
    Asked<Answer> ask(const std::string& readable, const Request& request, std::chrono::milliseconds timeLimit);

    void end() { process_.reset(); }

    const std::vector<std::string>& gaps() const { return gaps_; }

private:
    bool prepare(const std::string& readable, std::string& problem);
    bool awaitReady(std::string& problem);

    /** Whether it is worth while to ask another one. */
    template <class Answer>
    bool tryToAsk(const Request& request, std::chrono::milliseconds timeLimit, Asked<Answer>& asked);

    const std::string& program_;
    std::unique_ptr<EngineProcess> process_;
    std::string readable_;
    std::vector<std::string> gaps_;
};

template <class Answer>
EngineHost::Prober::Asked<Answer> EngineHost::Prober::ask(const std::string& readable, const Request& request,
                                                          std::chrono::milliseconds timeLimit)
{
    Asked<Answer> asked;
    // One that was ended from outside says nothing of what it was asked; two in a row do.
    for (int i = 0; i < 2; ++i)
        if (!prepare(readable, asked.problem) || !tryToAsk(request, timeLimit, asked))
            break;
    return asked;
}

/** Sees to it that there is one that can read this folder, if any. False when there is none; `problem` says why. */
bool EngineHost::Prober::prepare(const std::string& readable, std::string& problem)
{
    // What a worker may read is settled for good when it starts.
    if (process_ && !process_->hasEnded() && (readable.empty() || readable == readable_))
        return true;
    process_ = EngineProcess::start(program_, problem);
    if (!process_)
        return false;
    readable_ = readable;
    request::Hello hello;
    if (!readable.empty())
        hello.rules.readable.push_back(readable);
    process_->send(hello);
    return awaitReady(problem);
}

bool EngineHost::Prober::awaitReady(std::string& problem)
{
    while (!process_->ready() && !process_->hasEnded())
        process_->receive(std::chrono::milliseconds(20));
    const std::optional<event::Ready> ready = process_->ready();
    if (!process_->hasEnded()) {
        gaps_ = ready->containment.gaps;
        return true;
    }
    problem = EngineProcess::describeStart(ready);
    process_.reset();
    return false;
}

template <class Answer>
bool EngineHost::Prober::tryToAsk(const Request& request, std::chrono::milliseconds timeLimit, Asked<Answer>& asked)
{
    const Clock::time_point end = Clock::now() + timeLimit;
    process_->send(request);
    while (!process_->hasEnded()) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
        if (left.count() <= 0)
            break;
        std::optional<Event> event = process_->receive(std::min(left, kLook));
        if (auto* answer = event ? std::get_if<Answer>(&*event) : nullptr) {
            asked.answer = std::move(*answer);
            return false;
        }
    }
    asked.died = process_->hasEnded();
    const bool byItself = process_->finish().way == WorkerEnd::Way::Crashed;
    process_.reset();
    return asked.died && !byItself;
}

EngineHost::EngineHost(std::string program)
    : program_(program.empty() ? findEngineProgram() : std::move(program))
    , prober_(std::make_unique<Prober>(program_))
{
}

EngineHost::~EngineHost() = default;

std::unique_ptr<EngineProcess> EngineHost::start(ContainmentRules rules, const EngineOptions& options,
                                                 std::string& problem)
{
    std::unique_ptr<EngineProcess> process = EngineProcess::start(program_, problem);
    if (!process)
        return nullptr;
    // What was asked about is loaded now, and the memory that reading it took is better used here.
    if (const std::unique_lock lock(proberMutex_, std::try_to_lock); lock)
        prober_->end();
    // It comes up while what is installed is read, which happens once.
    const std::shared_ptr<const Installed> known = installed();
    request::Hello hello;
    hello.options = options;
    hello.rules = std::move(rules);
    for (const EffectCatalogue::Entry& effect : known->effects.all())
        hello.effects.push_back(*effect);
    process->send(hello);
    return process;
}

std::shared_ptr<const Installed> EngineHost::installed()
{
    const std::lock_guard lock(installedMutex_);
    if (!installed_)
        installed_ = std::make_shared<const Installed>(read());
    known_ = true;
    return installed_;
}

void EngineHost::setInstalled(Installed installed)
{
    const std::lock_guard lock(installedMutex_);
    installed_ = std::make_shared<const Installed>(std::move(installed));
    known_ = true;
}

Installed EngineHost::read()
{
    const std::lock_guard lock(proberMutex_);
    Installed result;
    auto asked = prober_->ask<event::CatalogueRead>({}, request::ReadCatalogue{}, kReadPatience);
    auto& read = asked.answer;
    // What it has read takes memory, and is not needed there again.
    prober_->end();
    if (!read) {
        result.failure =
            !asked.problem.empty() ? asked.problem : "The engine ended while it looked for what is installed.";
        return result;
    }
    for (EffectDescription& effect : read->effects)
        result.effects.add(std::move(effect));
    result.presets = std::move(read->presets);
    result.problems = std::move(read->problems);
    return result;
}

MediaProbeResult EngineHost::probeMedia(const std::string& path)
{
    const std::lock_guard lock(proberMutex_);
    auto asked = prober_->ask<event::MediaProbed>(folderOf(path), request::ProbeMedia{path}, kMediaPatience);
    if (asked.answer)
        return std::move(asked.answer->result);
    MediaProbeResult result;
    result.problem = asked.problem;
    if (result.problem.empty())
        result.problem = inQuotes(fs::path(path).filename().string()) +
                         (asked.died ? " is damaged: what reads it crashed." : " does not answer.");
    return result;
}

EffectProbeResult EngineHost::probeEffect(const std::string& service,
                                          const std::vector<std::pair<std::string, std::string>>& properties,
                                          std::chrono::milliseconds timeLimit)
{
    using Outcome = EffectProbeResult::Outcome;
    const std::lock_guard lock(proberMutex_);
    auto asked = prober_->ask<event::EffectProbed>({}, request::ProbeEffect{service, properties}, timeLimit);
    if (asked.answer)
        return std::move(asked.answer->result);
    if (!asked.problem.empty())
        return {Outcome::NotTried, asked.problem};
    const std::string name = "The effect " + inQuotes(service);
    return asked.died ? EffectProbeResult{Outcome::Crashes, name + " crashes."}
                      : EffectProbeResult{Outcome::Hangs, name + " does not come back."};
}

std::vector<std::string> EngineHost::gaps() const
{
    const std::lock_guard lock(proberMutex_);
    return prober_->gaps();
}

} // namespace workbench
