#pragma once

#include <memory>
#include <mutex>
#include <string>

namespace Mlt
{
class Repository;
}

namespace workbench
{

class AllowList;

/**
 * The media framework, initialised. Whatever holds an Mlt object also holds the session.
 *
 * There is one session for the life of the process: open() always returns the same one. The framework closes itself
 * when the program ends, and all Mlt objects must be gone by then. It cannot be closed earlier and opened again,
 * because its modules go on using what closing frees.
 */
class MltSession
{
public:
    /** Empty when the framework cannot be initialised; `problem` then says why. Safe from any thread. */
    static std::shared_ptr<MltSession> open(std::string* problem = nullptr);

    MltSession(const MltSession&) = delete;
    MltSession& operator=(const MltSession&) = delete;

    Mlt::Repository& repository() const { return *repository_; }

    /**
     * What may be made of an edit. By default, what the program's own lists allow of the effects that are installed,
     * which are read at the first call. Any thread.
     */
    std::shared_ptr<const AllowList> allowList();

    /** For one who has read the effects already, or tries effects that are not offered. Counts from the next graph. */
    void setAllowList(std::shared_ptr<const AllowList> allowList);

    /**
     * Sets the locale for numbers to "C", in which property values are written and read. open() does it; a program does
     * it again after anything that sets the locale from the environment, such as the constructor of the Qt application.
     */
    static void useNumericLocale();

private:
    explicit MltSession(Mlt::Repository* repository);

    Mlt::Repository* repository_; // belongs to the factory
    std::mutex allowMutex_;
    std::shared_ptr<const AllowList> allowList_;
};

} // namespace workbench
