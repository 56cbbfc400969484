#pragma once

#include "tests/engine/SampleMedia.h"
#include "workbench/engine/client/Engine.h"
#include "workbench/engine/worker/graph/MltSession.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <vector>

namespace workbench
{

namespace fs = std::filesystem;
using namespace std::chrono_literals;

/** Collects what an engine tells. */
struct Listener {
    std::mutex mutex;
    std::condition_variable changed;
    std::vector<FrameImagePtr> frames;
    std::vector<int> positions;
    std::vector<EngineProblem> problems;
    std::vector<bool> playing;

    EngineCallbacks callbacks()
    {
        return {[this](FrameImagePtr frame) { add(frames, std::move(frame)); },
                [this](int position) { add(positions, position); }, [this](bool is) { add(playing, is); },
                [this](const EngineProblem& problem) { add(problems, problem); }};
    }

    template <class T, class V>
    void add(std::vector<T>& to, V value)
    {
        {
            const std::lock_guard lock(mutex);
            to.push_back(std::move(value));
        }
        changed.notify_all();
    }

    template <class Condition>
    bool wait(Condition&& condition, std::chrono::milliseconds limit = 20s)
    {
        std::unique_lock lock(mutex);
        return changed.wait_for(lock, limit, condition);
    }

    bool waitForFrame(int frame, std::uint64_t revision)
    {
        return wait(
            [&] { return !frames.empty() && frames.back()->frame == frame && frames.back()->revision == revision; });
    }
};

inline int brightnessAt(const FrameImage& image)
{
    const std::uint8_t* pixel = image.pixel(image.width / 2, image.height / 2);
    return pixel[0] + pixel[1] + pixel[2];
}

inline std::size_t openFiles()
{
    return static_cast<std::size_t>(std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()));
}

/** An engine is made by each test; what it tells is collected. */
class EngineTest : public testing::Test
{
protected:
    std::shared_ptr<MltSession> session = MltSession::open(); // for graphs in this process
    Listener listener;
};

} // namespace workbench
