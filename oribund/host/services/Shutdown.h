#pragma once

#include "oribund/host/base/Export.h"

#include <functional>
#include <vector>

namespace oribund
{

/** The host's orderly end: whoever holds something that must go first asks to be told. */
class ORIBUND_API Shutdown
{
public:
    /** Why the host ends. */
    enum class eExitType {
        Normal,  ///< the user has left the program
        Restart, ///< the program is left to be started again
        Fatal    ///< the program ends because it cannot go on; touch nothing that may be broken
    };

    using Callback = std::function<void(eExitType)>;

    virtual ~Shutdown();

    /** Registers with the installed host. Callbacks run once, highest priority first, then in order of registration. */
    static void addCallback(Callback callback, int priority);

    /** What addCallback() forwards to. */
    virtual void add(Callback callback, int priority) = 0;
};

/** The ready-made Shutdown: a host keeps one and calls run() before it tears down what panels depend on. */
class ORIBUND_API ShutdownSequence : public Shutdown
{
public:
    ShutdownSequence();
    ~ShutdownSequence() override;

    void add(Callback callback, int priority) override;

    /** Runs every callback once and forgets them; one that is added meanwhile runs too, last. */
    void run(eExitType type);

private:
    struct Entry {
        int priority;
        Callback callback;
    };

    std::vector<Entry> entries_;
};

} // namespace oribund
