#pragma once

#include "workbench/engine/protocol/SharedMemory.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <string_view>

namespace workbench
{

/** What stands for an effect in the marks: made of its id in the projection. Never 0, which is no effect. */
std::uint64_t effectMark(std::string_view id);

/**
 * Where the worker is, in memory that its client can read at any time, also once the worker is gone: the effects that
 * its threads are in, until when the work in hand has to be done, and in which effect a signal came that ends the
 * process.
 *
 * Nothing here takes a lock, and nothing that the worker writes can do more than name the wrong effect.
 */
class TraceMarks
{
public:
    using Clock = std::chrono::steady_clock; // the same in all processes

    /** Empty when there is no memory. */
    static std::unique_ptr<TraceMarks> create();

    /** Those of the client that started this process. Empty when the descriptor is not of such. */
    static std::unique_ptr<TraceMarks> map(Descriptor descriptor);

    int descriptor() const { return memory_.descriptor(); }

    // The worker's side. Any thread.

    /** The calling thread is in an effect, inside what it is in already; 0 for what is no effect. */
    void enter(std::uint64_t effect);

    /** Ends what the thread entered last; the time it took does not count for what is around it. */
    void leave();

    enum class Work { Command, Playback };

    /** The work is late from then on. `Clock::time_point::max()` when there is none. */
    void setDeadline(Work work, Clock::time_point deadline);

    /** What has a deadline may take until then, if it has not more time already. */
    void allowUntil(Clock::time_point deadline);

    /** One more request was taken off the line. */
    void countTaken();

    /** The frame that is being rendered. */
    void setFrame(int frame);

    /** Called in a signal handler: the calling thread ends the process. The first one counts. */
    void noteFault() noexcept;

    // The client's side. Any thread.

    /** The effect in which the process ended, as its own signal handler has it. 0 for none. */
    std::uint64_t faulted() const;

    /** The effect that has been at work for longest; only what is innermost in its thread is at work. 0 for none. */
    std::uint64_t current() const;

    int frame() const;

    /** The requests that were taken off the line. */
    std::uint32_t taken() const;

    /** There is work that has a deadline. */
    bool isAtWork() const;

    bool isLate(Clock::time_point now) const;

    /** Before a new worker writes here. The one before is gone. */
    void clear();

private:
    struct Page;
    struct Lane;

    explicit TraceMarks(SharedMemory memory);

    Page& page() const;
    Lane* mine(bool claim);

    SharedMemory memory_;
};

} // namespace workbench
