#include "workbench/engine/client/EngineHost.h"

#include "workbench/engine/client/Assistant.h"
#include "workbench/engine/client/EngineProcess.h"
#include "workbench/model/projection/ProjectionQueries.h"

#include <cstring>
#include <filesystem>
#include <utility>

namespace workbench
{

namespace
{

namespace fs = std::filesystem;

constexpr std::chrono::seconds kReadPatience{20};

// Media may lie on a disk that has to wake up, or at the other end of a slow line.
constexpr std::chrono::seconds kMediaPatience{60};
constexpr std::chrono::seconds kMakePatience{20};

std::string folderOf(const std::string& path)
{
    return fs::path(path).parent_path().string();
}

std::vector<EffectDescription> descriptionsOf(const EffectCatalogue& catalogue)
{
    std::vector<EffectDescription> effects;
    for (const EffectCatalogue::Entry& effect : catalogue.all())
        effects.push_back(*effect);
    return effects;
}

/** Of this process alone: what the worker has handed over is wanted back. */
FrameImagePtr copyOf(const FrameImage& image)
{
    const std::shared_ptr<std::uint8_t[]> bytes = std::make_shared_for_overwrite<std::uint8_t[]>(image.rgba.size());
    std::memcpy(bytes.get(), image.rgba.data(), image.rgba.size());
    auto copy = std::make_shared<FrameImage>(image);
    copy->rgba = PixelBytes(bytes, image.rgba.size());
    return copy;
}

} // namespace

EngineHost::EngineHost(std::string program)
    : program_(program.empty() ? findEngineProgram() : std::move(program))
    , assistant_(std::make_unique<Assistant>(program_))
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
    rest();
    // It comes up while what is installed is read, which happens once.
    const std::shared_ptr<const Installed> known = installed();
    request::Hello hello;
    hello.options = options;
    hello.rules = std::move(rules);
    hello.effects = descriptionsOf(known->effects);
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
    const std::lock_guard turn(assistantMutex_);
    assistant_->allow(descriptionsOf(installed_->effects));
}

Installed EngineHost::read()
{
    const std::lock_guard lock(assistantMutex_);
    Installed result;
    const Assistant::Asked asked = assistant_->ask({}, request::ReadCatalogue{}, kReadPatience);
    const auto* read = asked.as<event::CatalogueRead>();
    if (!read) {
        assistant_->end();
        result.failure =
            !asked.problem.empty() ? asked.problem : "The engine ended while it looked for what is installed.";
        return result;
    }
    for (const EffectDescription& effect : read->effects)
        result.effects.add(effect);
    result.presets = read->presets;
    result.problems = read->problems;
    // What that one has read takes memory, and is not needed there again.
    assistant_->allow(read->effects);
    return result;
}

MediaProbeResult EngineHost::probeMedia(const std::string& path)
{
    const std::lock_guard lock(assistantMutex_);
    const Assistant::Asked asked = assistant_->ask({{folderOf(path)}, {}}, request::ProbeMedia{path}, kMediaPatience);
    if (const auto* probed = asked.as<event::MediaProbed>())
        return probed->result;
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
    const std::lock_guard lock(assistantMutex_);
    const Assistant::Asked asked = assistant_->ask({}, request::ProbeEffect{service, properties}, timeLimit);
    if (const auto* probed = asked.as<event::EffectProbed>())
        return probed->result;
    if (!asked.problem.empty())
        return {Outcome::NotTried, asked.problem};
    return asked.died ? EffectProbeResult{Outcome::Crashes, "crashes."}
                      : EffectProbeResult{Outcome::Hangs, "does not come back."};
}

Made EngineHost::make(const PictureRequest& wanted, const std::vector<std::string>& files,
                      const std::vector<std::string>& soon, const std::atomic<bool>& givenUp)
{
    installed(); // by which it is known what may be made
    const std::lock_guard lock(assistantMutex_);
    const Request request = std::visit([](const auto& one) -> Request { return one; }, wanted);
    const Assistant::Asked asked = assistant_->ask({files, soon}, request, kMakePatience, &givenUp);
    Made made;
    if (const auto* thumbnail = asked.as<event::ThumbnailMade>()) {
        made.problem = thumbnail->problem;
        if (const FrameImagePtr picture = thumbnail->picture ? assistant_->take(*thumbnail->picture) : nullptr)
            made.picture = copyOf(*picture);
    } else if (const auto* waveform = asked.as<event::WaveformMade>()) {
        made.problem = waveform->problem;
        if (made.problem.empty())
            made.waveform = std::make_shared<const WaveformPeaks>(waveform->peaks);
    } else {
        made.isFinal = asked.problem.empty();
        made.problem = !made.isFinal ? asked.problem
                       : asked.died  ? "The engine crashed over it."
                                     : "It does not come in time.";
    }
    return made;
}

void EngineHost::rest()
{
    if (const std::unique_lock lock(assistantMutex_, std::try_to_lock); lock)
        assistant_->end();
}

std::vector<std::string> EngineHost::gaps() const
{
    const std::lock_guard lock(assistantMutex_);
    return assistant_->gaps();
}

} // namespace workbench
