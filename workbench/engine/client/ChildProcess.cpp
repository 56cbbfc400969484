#include "workbench/engine/client/ChildProcess.h"

#include <sys/wait.h>

#include <cerrno>
#include <csignal>

namespace workbench
{

ChildProcess::ChildProcess(pid_t id)
    : id_(id)
    , reaper_([this] { reap(); })
{
}

ChildProcess::~ChildProcess()
{
    end({});
    reaper_.join();
}

bool ChildProcess::isStopped() const
{
    siginfo_t found{};
    return waitid(P_PID, static_cast<id_t>(id_), &found, WSTOPPED | WNOHANG | WNOWAIT) == 0 && found.si_pid == id_;
}

int ChildProcess::end(std::chrono::milliseconds patience)
{
    std::unique_lock lock(mutex_);
    const auto isGone = [this] { return gone_; };
    if (!ended_.wait_for(lock, patience, isGone)) {
        kill(id_, SIGKILL);
        ended_.wait(lock, isGone);
    }
    return status_;
}

void ChildProcess::reap()
{
    // The number may go to another process once this one is reaped: under the lock, so that nobody kills that one.
    siginfo_t unused;
    while (waitid(P_PID, static_cast<id_t>(id_), &unused, WEXITED | WNOWAIT) != 0 && errno == EINTR) {
    }
    const std::lock_guard lock(mutex_);
    waitpid(id_, &status_, 0);
    gone_ = true;
    ended_.notify_all();
}

} // namespace workbench
