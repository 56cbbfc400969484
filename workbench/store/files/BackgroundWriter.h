#pragma once

#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace workbench
{

/** Writes a file again and again on a thread of its own, whole or not at all each time. Used by one thread. */
class BackgroundWriter
{
public:
    explicit BackgroundWriter(const std::filesystem::path& file);

    /** Finishes a write that has begun, and forgets one that has not. */
    ~BackgroundWriter();

    BackgroundWriter(const BackgroundWriter&) = delete;
    BackgroundWriter& operator=(const BackgroundWriter&) = delete;

    /** Of several that wait, the latest is written. */
    void store(std::string contents);

    /** Waits until all is written. */
    void flush();

    /** Forgets what waits and removes the file. */
    void remove();

    /** What the last write failed of; empty after a good one. Told once. */
    std::string takeProblem();

private:
    void run();

    std::filesystem::path file_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::optional<std::string> waiting_;
    std::string problem_;
    bool busy_ = false;
    bool ending_ = false;
    std::thread thread_; // last: uses all of the above
};

} // namespace workbench
