#pragma once

#include "workbench/system/Descriptor.h"

#include <chrono>

namespace workbench
{

/** For a thread that waits for what comes over a connection and, besides, for other threads. */
class WakeUp
{
public:
    WakeUp();

    /** Wakes the thread when the block ends. */
    class AtEnd
    {
    public:
        explicit AtEnd(WakeUp& wake)
            : wake_(wake)
        {
        }

        ~AtEnd() { wake_.wake(); }

        AtEnd(const AtEnd&) = delete;
        AtEnd& operator=(const AtEnd&) = delete;

    private:
        WakeUp& wake_;
    };

    /** Any thread. It counts also when nobody waits yet. */
    void wake();

    /** Until somebody wakes, the descriptor has something to read, or the time is over. -1 for no descriptor. */
    void wait(int descriptor, std::chrono::milliseconds limit);

private:
    Descriptor event_;
};

} // namespace workbench
