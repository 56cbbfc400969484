#include "workbench/engine/worker/EffectProbe.h"

#include "workbench/engine/worker/graph/FrameRendering.h"
#include "workbench/engine/worker/graph/MltSession.h"
#include "workbench/model/projection/ProjectionQueries.h"

#include <mlt++/Mlt.h>

#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <memory>
#include <optional>
#include <thread>

namespace workbench
{

namespace
{

using Clock = std::chrono::steady_clock;

// Exit statuses of the probing process; a status of its own tells that main() reached runEffectProbe() at all.
constexpr int kWorks = 40;
constexpr int kMissing = 41;
constexpr int kFails = 42;

constexpr int kFrames = 4;

std::optional<pid_t> spawnProbe(const std::vector<std::string>& arguments)
{
    std::vector<char*> argv;
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_RDWR, 0);
    pid_t process = 0;
    const int error = posix_spawn(&process, "/proc/self/exe", &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return error == 0 ? std::optional(process) : std::nullopt;
}

/** The wait status; empty when the time ran out, and the process was then ended. */
std::optional<int> waitFor(pid_t process, std::chrono::milliseconds limit)
{
    const Clock::time_point deadline = Clock::now() + limit;
    int status = 0;
    while (waitpid(process, &status, WNOHANG) == 0) {
        if (Clock::now() > deadline) {
            kill(process, SIGKILL);
            waitpid(process, &status, 0);
            return std::nullopt;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return status;
}

EffectProbeResult judge(const std::string& service, std::optional<int> status)
{
    const std::string name = "The effect " + inQuotes(service) + " ";
    if (!status)
        return {EffectProbeResult::Outcome::Hangs, name + "does not come back."};
    if (WIFSIGNALED(*status))
        return {EffectProbeResult::Outcome::Crashes, name + "crashes."};
    switch (WEXITSTATUS(*status)) {
    case kWorks:
        return {};
    case kMissing:
        return {EffectProbeResult::Outcome::Missing, name + "is not installed."};
    case kFails:
        return {EffectProbeResult::Outcome::Fails, name + "gives no picture."};
    default:
        return {EffectProbeResult::Outcome::NotTried, name + "could not be tried."};
    }
}

bool renders(Mlt::Profile& profile, Mlt::Producer& producer)
{
    const FrameSize size{profile.width(), profile.height()};
    for (int position = 0; position < kFrames; ++position) {
        if (!renderFrame(producer, position, size))
            return false;
        const std::unique_ptr<Mlt::Frame> frame(producer.get_frame());
        mlt_audio_format format = mlt_audio_s16;
        int frequency = 48000;
        int channels = 2;
        int samples = 1920;
        if (!frame->get_audio(format, frequency, channels, samples))
            return false;
    }
    return true;
}

} // namespace

EffectProbeResult probeEffect(const std::string& service,
                              const std::vector<std::pair<std::string, std::string>>& properties,
                              std::chrono::milliseconds timeLimit)
{
    std::vector<std::string> arguments{"effect-probe", std::string(kEffectProbeArgument), service};
    for (const auto& [name, value] : properties)
        arguments.push_back(name + '=' + value);
    const std::optional<pid_t> process = spawnProbe(arguments);
    if (!process)
        return {EffectProbeResult::Outcome::NotTried, "The effect " + inQuotes(service) + " could not be tried."};
    return judge(service, waitFor(*process, timeLimit));
}

int runEffectProbe(const std::vector<std::string>& arguments)
{
    const std::shared_ptr<MltSession> session = MltSession::open();
    if (!session || arguments.empty())
        return kFails;
    Mlt::Profile profile("dv_pal");
    profile.set_width(320);
    profile.set_height(180);
    Mlt::Filter filter(profile, arguments.front().c_str());
    if (!filter.is_valid())
        return kMissing;
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const std::size_t equals = arguments[i].find('=');
        if (equals != std::string::npos)
            filter.set(arguments[i].substr(0, equals).c_str(), arguments[i].substr(equals + 1).c_str());
    }
    Mlt::Producer producer(profile, "noise:");
    producer.attach(filter);
    return renders(profile, producer) ? kWorks : kFails;
}

} // namespace workbench
