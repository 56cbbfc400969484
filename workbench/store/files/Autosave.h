#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace workbench
{

class BackgroundWriter;
class SessionLock;

/** What a session that ended without closing has left behind. */
struct Recoverable {
    std::filesystem::path file;    ///< the project as it was last autosaved; media paths are absolute
    std::filesystem::path project; ///< where it was last saved or read from; empty for one never saved
    std::filesystem::file_time_type time;
};

/**
 * Keeps a copy of a changed project in a recovery folder, so that a crash loses no more than the interval.
 *
 * The host reports changes, asks about once a second whether a copy is due, and gives its contents; they are written on
 * a thread of their own, whole or not at all. A session is known by a file that it holds locked: the system gives up
 * the lock however the process ends, and a session whose file is not locked has crashed. Members are called from one
 * thread.
 */
class Autosave
{
public:
    using Clock = std::chrono::steady_clock;

    static constexpr std::chrono::seconds kDefaultInterval{30};

    explicit Autosave(const std::filesystem::path& folder, Clock::duration interval = kDefaultInterval);

    /** Without close() before it, the copy stays and is offered at the next start, as after a crash. */
    ~Autosave();

    Autosave(const Autosave&) = delete;
    Autosave& operator=(const Autosave&) = delete;

    /** The project's own file, or empty: told to the person who is offered the copy. False when another session that
        runs has the project open: it keeps it, and this one has none. */
    bool setProject(const std::filesystem::path& project);

    /** The edit is no longer what was saved. */
    void changed(Clock::time_point now);

    /** Whether a copy should be made now: early enough to be on the disk when the interval is over. */
    bool due(Clock::time_point now) const;

    /** Writes this copy in the background. Of several that wait, the latest is written. */
    void store(std::string contents);

    /** The project has been saved, or its changes have been given up: removes the copy. */
    void clean();

    /** Ends the session in order, without a copy. */
    void close();

    /** Waits until nothing is left to write. */
    void flush();

    /** What went wrong since the last call, for a person to read; empty when nothing did. A copy that failed is due
        again after an interval. */
    std::string takeProblem();

    /** Makes what a crashed session has left this session's own copy, so that it stays safe until clean(). The path to
        read it from; empty when it is gone, or another program has taken it. */
    std::filesystem::path adopt(const Recoverable& found);

    /** What crashed sessions have left, newest first. Removes what is left of those that have nothing to offer. */
    static std::vector<Recoverable> findRecoverable(const std::filesystem::path& folder);

    /** Removes what a crashed session has left. */
    static void discard(const Recoverable& found);

private:
    Clock::duration interval_;
    std::string problem_;                  // before the session, of which it tells
    std::unique_ptr<SessionLock> session_; ///< null when the folder cannot be used
    std::unique_ptr<BackgroundWriter> writer_;
    Clock::time_point dirtySince_{};
    bool dirty_ = false;
};

} // namespace workbench
