#pragma once

#include <functional>
#include <memory>

namespace workbench
{

/**
 * Does what takes time off the user interface's thread. What it makes of the result comes back to that thread, unless
 * the Background is gone by then. Made and used on the user interface's thread.
 */
class Background
{
public:
    /** Called on the user interface's thread when the work is done. */
    using Completion = std::function<void()>;
    /** Runs on a thread of its own, uses nothing that belongs to the user interface, and yields what is to follow. */
    using Work = std::function<Completion()>;

    Background();
    ~Background();

    Background(const Background&) = delete;
    Background& operator=(const Background&) = delete;

    void run(Work work);

    /** How much is still to be done. */
    int pending() const;

    /** Waits for all threads in the process; false when one is stuck. For the end of the program. */
    static bool finishAll(int milliseconds);

private:
    struct State;

    std::shared_ptr<State> state_;
};

} // namespace workbench
