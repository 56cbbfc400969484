#include "workbench/store/files/BackgroundWriter.h"

#include "workbench/store/files/AtomicFile.h"

#include <utility>

namespace workbench
{

BackgroundWriter::BackgroundWriter(const std::filesystem::path& file)
    : file_(file)
    , thread_([this] { run(); })
{
}

BackgroundWriter::~BackgroundWriter()
{
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    changed_.notify_all();
    thread_.join();
}

void BackgroundWriter::store(std::string contents)
{
    {
        const std::lock_guard lock(mutex_);
        waiting_ = std::move(contents);
    }
    changed_.notify_all();
}

void BackgroundWriter::flush()
{
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return !waiting_ && !busy_; });
}

void BackgroundWriter::remove()
{
    {
        const std::lock_guard lock(mutex_);
        waiting_.reset();
    }
    // A write that has begun would bring the file back.
    flush();
    std::error_code ignored;
    std::filesystem::remove(file_, ignored);
}

std::string BackgroundWriter::takeProblem()
{
    const std::lock_guard lock(mutex_);
    return std::exchange(problem_, std::string());
}

void BackgroundWriter::run()
{
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return ending_ || waiting_; });
        if (ending_)
            return;
        const std::string contents = std::move(*waiting_);
        waiting_.reset();
        busy_ = true;
        lock.unlock();
        std::string problem = replaceFile(file_, contents);
        lock.lock();
        problem_ = std::move(problem);
        busy_ = false;
        changed_.notify_all();
    }
}

} // namespace workbench
