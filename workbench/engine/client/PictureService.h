#pragma once

#include "workbench/engine/client/EngineHost.h"
#include "workbench/engine/protocol/PictureRequests.h"
#include "workbench/store/files/DiskCache.h"

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <unordered_set>
#include <vector>

namespace workbench
{

/**
 * Has small pictures and waveforms made, one after the other, by the worker that the host asks, and keeps them on the
 * disk: what was made once is there at the next start. It is made again when a file that it shows has changed.
 *
 * What is in view comes first; of that, what the disk has. What ends the worker is not tried again. Used on the user
 * interface's thread, which it never holds up.
 */
class PictureService
{
public:
    enum class Priority { Visible, Ahead };

    /** Called on the user interface's thread, once, with what was wanted or the reason why there is none. */
    using Done = std::function<void(const Made&)>;

    /** Runs a function on the user interface's thread, some time later. */
    using Post = std::function<void(std::function<void()>)>;

    struct Settings {
        std::filesystem::path folder;                   ///< of what is kept
        std::uint64_t limit = std::uint64_t{256} << 20; ///< of that, in bytes
        std::chrono::milliseconds restAfter{10'000};    ///< with nothing to do, after which the worker is ended
    };

    PictureService(std::shared_ptr<EngineHost> host, Settings settings, Post post);

    /** Nobody is called any more. */
    ~PictureService();

    PictureService(const PictureService&) = delete;
    PictureService& operator=(const PictureService&) = delete;

    /** What is wanted, and by whom, as long as somebody holds it. */
    struct Job;

    /** Dropped, it takes the wish back. */
    using Ticket = std::shared_ptr<Job>;

    /** Whether it is kept from one start to the next. What changes with every touch is not worth it. */
    enum class Keeping { OnDisk, None };

    Ticket request(PictureRequest wanted, Priority priority, Done done, Keeping keeping = Keeping::OnDisk);

    void setPriority(const Ticket& ticket, Priority priority);

private:
    void run();
    Ticket next();
    void waitForJobs(std::unique_lock<std::mutex>& lock);
    void work(const Ticket& job);
    bool answerFromMemory(const Ticket& job, const std::string& key);
    void make(const Ticket& job, const std::string& key);
    void tell(const Ticket& job, Made made) const;

    const std::shared_ptr<EngineHost> host_;
    const Settings settings_;
    const Post post_;
    std::atomic<bool> quit_{false};

    std::mutex mutex_; // guards the following, and the order of jobs
    std::condition_variable changed_;
    std::vector<std::weak_ptr<Job>> waiting_;
    std::set<std::string> files_; // that were asked about since the worker rested
    std::uint64_t count_ = 0;

    // The thread's own.
    DiskCache kept_;
    std::unordered_set<std::string> hopeless_; // keys
    bool resting_ = true;

    std::thread thread_; // last: it uses all of the above
};

} // namespace workbench
