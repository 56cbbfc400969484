#pragma once

#include "workbench/engine/client/ChildProcess.h"
#include "workbench/engine/protocol/FramePool.h"
#include "workbench/engine/protocol/MessageChannel.h"
#include "workbench/engine/protocol/Messages.h"
#include "workbench/engine/protocol/TraceMarks.h"

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace workbench
{

/** How a worker came to its end. */
struct WorkerEnd {
    enum class Way {
        Crashed, ///< by a fault of its own
        Hung,    ///< work was late, and it was ended for that
        Silent,  ///< stopped from outside or deaf to requests, and ended for that
        Ended    ///< from outside, or by itself
    };

    Way way = Way::Ended;
    std::uint64_t effect = 0; ///< the mark of the effect to blame; 0 for none
    int frame = 0;            ///< that was at work
    bool wasReady = false;    ///< false: it never came as far as to do anything
};

/**
 * A worker: a process of its own, and what it has in common with this one. All of it goes with the object, at once and
 * whatever the worker is doing. Used by one thread at a time.
 */
class EngineProcess
{
public:
    /** Starts one; it is still coming up when this returns. Empty when the system refuses; `problem` then says why. */
    static std::unique_ptr<EngineProcess> start(const std::string& program, std::string& problem);

    ~EngineProcess();

    EngineProcess(const EngineProcess&) = delete;
    EngineProcess& operator=(const EngineProcess&) = delete;

    /** What the worker can no longer take is lost; hasEnded() tells. */
    void send(const Request& request);

    /**
     * What it tells next; empty when nothing came in that time or it has ended. Says by itself what it hears of
     * event::Ready.
     */
    std::optional<Event> receive(std::chrono::milliseconds patience);

    /** Whether it is of no more use: gone, late with its work, deaf to requests, or not talking sense. */
    bool hasEnded();

    /** Ends it, if it has not ended yet, and tells how that came. */
    WorkerEnd finish();

    /** Readable when there is something to receive. */
    int descriptor() const { return channel_.descriptor(); }

    FramePool& pool() { return *pool_; }

    pid_t id() const { return child_.id(); }

    /** Why one that ended before it could do anything did so, for a person; `ready` is what it said, if it did. */
    static std::string describeStart(const std::optional<event::Ready>& ready, const WorkerEnd& end);

    /** Once the worker has said so. */
    const std::optional<event::Ready>& ready() const { return ready_; }

private:
    EngineProcess(pid_t id, Descriptor socket, std::unique_ptr<FramePool> pool, std::unique_ptr<TraceMarks> marks);

    bool isSilent(TraceMarks::Clock::time_point now) const;

    ChildProcess child_;
    MessageChannel channel_;
    std::unique_ptr<FramePool> pool_;
    std::unique_ptr<TraceMarks> marks_;
    std::vector<std::uint8_t> message_;
    std::optional<event::Ready> ready_;
    const TraceMarks::Clock::time_point started_ = TraceMarks::Clock::now();
    TraceMarks::Clock::time_point lastSign_; // of life, or since when it owes one
    std::uint32_t sent_ = 0;                 // requests
    bool broken_ = false;                    // of no more use
    bool closed_ = false;                    // because it hung up
    bool finished_ = false;
};

/** Where the program that workers run is; empty when it is nowhere. */
std::string findEngineProgram();

} // namespace workbench
