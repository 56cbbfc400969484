#pragma once

#include <mutex>

namespace oribund
{

/** A lock that the thread which holds it may take again. Short stretches only: nothing under it calls out. */
class CriticalSection
{
public:
    /** Holds the section from construction to destruction. */
    class Lock
    {
    public:
        explicit Lock(CriticalSection& section)
            : section_(section)
        {
            section_.enter();
        }

        ~Lock() { section_.leave(); }

        Lock(const Lock&) = delete;
        Lock& operator=(const Lock&) = delete;

    private:
        CriticalSection& section_;
    };

    CriticalSection() = default;
    CriticalSection(const CriticalSection&) = delete;
    CriticalSection& operator=(const CriticalSection&) = delete;

    void enter() { mutex_.lock(); }

    void leave() noexcept { mutex_.unlock(); }

private:
    std::recursive_mutex mutex_;
};

} // namespace oribund
