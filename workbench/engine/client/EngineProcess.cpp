#include "workbench/engine/client/EngineProcess.h"

#include "workbench/engine/protocol/MessageCodec.h"
#include "workbench/engine/protocol/WorkerDescriptors.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <utility>

namespace workbench
{

namespace
{

namespace fs = std::filesystem;

constexpr const char* kProgram = "oribund-engine";

// A worker takes what it is sent off the line at once; one that does not is stopped, or gone mad.
constexpr std::chrono::seconds kSendPatience{5};
constexpr std::chrono::seconds kTakePatience{3};

constexpr std::chrono::milliseconds kEndPatience{1000};

// On a machine under load a worker comes up in a second or two; one that needs longer than this never will.
constexpr std::chrono::seconds kStartPatience{20};

/** A second number for an open file, out of the way of those that the worker is to find. */
Descriptor moveUp(int number)
{
    return Descriptor(fcntl(number, F_DUPFD_CLOEXEC, 10));
}

/** The standard input and output of a worker lead nowhere: modules print what means nothing to anybody. */
int spawn(const std::string& program, pid_t& id, int socket, int slots, int marks)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_RDWR, 0);
    posix_spawn_file_actions_adddup2(&actions, socket, kSocketDescriptor);
    posix_spawn_file_actions_adddup2(&actions, slots, kSlotsDescriptor);
    posix_spawn_file_actions_adddup2(&actions, marks, kMarksDescriptor);

    // Threads of the program may have blocked signals, and children inherit that.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);

    std::string name = kProgram;
    const std::array<char*, 2> arguments{name.data(), nullptr};
    const int error = posix_spawn(&id, program.c_str(), &actions, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return error;
}

/** A fault is what the process does to itself. What somebody else does to it says nothing about its work. */
bool isFault(int status)
{
    if (!WIFSIGNALED(status))
        return WEXITSTATUS(status) != 0;
    const int signal = WTERMSIG(status);
    return signal != SIGKILL && signal != SIGTERM && signal != SIGINT && signal != SIGHUP && signal != SIGQUIT;
}

} // namespace

std::unique_ptr<EngineProcess> EngineProcess::start(const std::string& program, std::string& problem)
{
    auto sockets = MessageChannel::makePair();
    auto pool = FramePool::create();
    auto marks = TraceMarks::create();
    if (!sockets || !pool || !marks) {
        problem = "The engine cannot be started: the system has no memory or no open files left.";
        return nullptr;
    }
    const Descriptor socket = moveUp(sockets->second.number());
    const Descriptor slots = moveUp(pool->descriptor());
    const Descriptor trace = moveUp(marks->descriptor());
    pid_t id = 0;
    const int error = program.empty() ? ENOENT : spawn(program, id, socket.number(), slots.number(), trace.number());
    if (error != 0) {
        problem = std::string("The engine cannot be started: ") + std::strerror(error) + ". The program " + kProgram +
                  " belongs beside the workbench; install it again.";
        return nullptr;
    }
    return std::unique_ptr<EngineProcess>(
        new EngineProcess(id, std::move(sockets->first), std::move(pool), std::move(marks)));
}

EngineProcess::EngineProcess(pid_t id, Descriptor socket, std::unique_ptr<FramePool> pool,
                             std::unique_ptr<TraceMarks> marks)
    : child_(id)
    , channel_(std::move(socket))
    , pool_(std::move(pool))
    , marks_(std::move(marks))
{
}

EngineProcess::~EngineProcess() = default;

void EngineProcess::send(const Request& request)
{
    if (broken_)
        return;
    if (marks_->taken() == sent_)
        lastSign_ = TraceMarks::Clock::now();
    ++sent_;
    broken_ = channel_.send(encode(request), kSendPatience) != MessageChannel::Outcome::Done;
}

std::optional<Event> EngineProcess::receive(std::chrono::milliseconds patience)
{
    while (!broken_) {
        const MessageChannel::Outcome outcome = channel_.receive(message_, patience);
        if (outcome == MessageChannel::Outcome::TimedOut)
            return std::nullopt;
        closed_ = outcome == MessageChannel::Outcome::Closed;
        std::optional<Event> event =
            outcome == MessageChannel::Outcome::Done ? decodeEvent(message_) : std::optional<Event>();
        lastSign_ = TraceMarks::Clock::now();
        if (!event) {
            broken_ = true;
        } else if (const auto* ready = std::get_if<event::Ready>(&*event)) {
            ready_ = *ready;
            broken_ = ready->version != kProtocolVersion || !ready->problem.empty();
        } else {
            return event;
        }
    }
    return std::nullopt;
}

bool EngineProcess::hasEnded()
{
    const TraceMarks::Clock::time_point now = TraceMarks::Clock::now();
    return broken_ || marks_->isLate(now) || isSilent(now) || (!ready_ && now > started_ + kStartPatience);
}

/** The marks say nothing of a worker that was stopped while it had nothing to do. */
bool EngineProcess::isSilent(TraceMarks::Clock::time_point now) const
{
    return ready_ && marks_->taken() != sent_ && !marks_->isAtWork() && now > lastSign_ + kTakePatience;
}

std::string EngineProcess::describeStart(const std::optional<event::Ready>& ready, const WorkerEnd& end)
{
    if (ready && !ready->problem.empty())
        return ready->problem;
    if (ready && ready->version != kProtocolVersion)
        return "The engine is of another version than the workbench. Install both again.";
    return end.way == WorkerEnd::Way::Crashed ? "The engine crashed as soon as it was started. Install it again."
                                              : "The engine was ended from outside while it was starting.";
}

WorkerEnd EngineProcess::finish()
{
    WorkerEnd end;
    if (std::exchange(finished_, true))
        return end;
    const TraceMarks::Clock::time_point now = TraceMarks::Clock::now();
    const bool late = !broken_ && marks_->isLate(now);
    const bool silent = !closed_ && (isSilent(now) || (late && child_.isStopped()));
    // A socket closes a little before its process is gone, and how that went is worth knowing.
    const int status = child_.end(closed_ ? kEndPatience : std::chrono::milliseconds(0));
    end.wasReady = ready_ && ready_->problem.empty();
    end.frame = marks_->frame();
    if (silent) {
        end.way = WorkerEnd::Way::Silent;
    } else if (late) {
        end.way = WorkerEnd::Way::Hung;
        end.effect = marks_->current();
    } else if (isFault(status) || marks_->faulted() != 0) {
        end.way = WorkerEnd::Way::Crashed;
        end.effect = marks_->faulted() != 0 ? marks_->faulted() : marks_->current();
    }
    return end;
}

std::string findEngineProgram()
{
    if (const char* named = std::getenv("ORIBUND_ENGINE"))
        return named;
    std::error_code error;
    const fs::path folder = fs::read_symlink("/proc/self/exe", error).parent_path();
    for (const fs::path& place : {folder / kProgram, folder / ".." / "libexec" / kProgram})
        if (fs::exists(place, error))
            return place.lexically_normal().string();
    return {};
}

} // namespace workbench
