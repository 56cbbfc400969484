#pragma once

#include <sys/types.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace workbench
{

/** A child of this process. It is reaped as soon as it ends, also while nobody looks. It ends with the object. */
class ChildProcess
{
public:
    explicit ChildProcess(pid_t id);
    ~ChildProcess();

    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /** Also once it has ended. */
    pid_t id() const { return id_; }

    /** By a signal that lets nothing of it run until another one comes. */
    bool isStopped() const;

    /** Kills it, unless it ends by itself in that time. Returns its status, as waitpid() has it. */
    int end(std::chrono::milliseconds patience);

private:
    void reap();

    const pid_t id_;
    std::mutex mutex_; // guards the two
    bool gone_ = false;
    int status_ = 0;
    std::condition_variable ended_;
    std::thread reaper_; // last: it uses all of the above
};

} // namespace workbench
