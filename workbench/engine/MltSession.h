#pragma once

#include <memory>
#include <string>

namespace Mlt
{
class Repository;
}

namespace workbench
{

/**
 * The media framework, initialised. Whatever holds an Mlt object also holds the session, so that the factory is closed
 * only after the last of those objects is gone.
 *
 * There is one session at a time: open() returns the one in use. It may be opened again after it was closed.
 */
class MltSession
{
public:
    /** Empty when the framework cannot be initialised; `problem` then says why. Safe from any thread. */
    static std::shared_ptr<MltSession> open(std::string* problem = nullptr);

    ~MltSession();

    MltSession(const MltSession&) = delete;
    MltSession& operator=(const MltSession&) = delete;

    Mlt::Repository& repository() const { return *repository_; }

    /**
     * Sets the locale for numbers to "C", in which property values are written and read. open() does it; a program does
     * it again after anything that sets the locale from the environment, such as the constructor of the Qt application.
     */
    static void useNumericLocale();

    /** Notes that a thread was left behind inside the framework: from then on the session is never closed. */
    static void noteAbandonedThread();

    /** True when a thread is stuck in the framework: the program then leaves with std::_Exit, not by returning from
     * main(). */
    static bool hasAbandonedThread();

private:
    explicit MltSession(Mlt::Repository* repository);

    Mlt::Repository* repository_; // belongs to the factory
};

} // namespace workbench
