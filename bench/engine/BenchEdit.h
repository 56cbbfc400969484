#pragma once

#include "workbench/engine/client/Engine.h"
#include "workbench/engine/client/EngineHost.h"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace workbench
{

inline constexpr int kWidth = 1280;
inline constexpr int kHeight = 720;
inline constexpr int kFrames = 250;

/** The picture that came last. */
class Latest
{
public:
    EngineCallbacks callbacks()
    {
        EngineCallbacks callbacks;
        callbacks.frame = [this](FrameImagePtr picture) {
            const std::lock_guard lock(mutex_);
            picture_ = std::move(picture);
            arrivals_.emplace_back(picture_->frame, std::chrono::steady_clock::now());
            came_.notify_one();
        };
        callbacks.position = [](int) {};
        callbacks.playing = [](bool) {};
        callbacks.problem = [](const EngineProblem&) {};
        return callbacks;
    }

    bool wait(int frame)
    {
        return waitFor([&] { return picture_ && picture_->frame == frame; });
    }

    bool waitForRevision(std::uint64_t revision)
    {
        return waitFor([&] { return picture_ && picture_->revision == revision; });
    }

    using Arrivals = std::vector<std::pair<int, std::chrono::steady_clock::time_point>>;

    /** Which frames came when, since the last call. */
    Arrivals takeArrivals()
    {
        const std::lock_guard lock(mutex_);
        return std::exchange(arrivals_, {});
    }

private:
    template <class Condition>
    bool waitFor(Condition&& condition)
    {
        std::unique_lock lock(mutex_);
        return came_.wait_for(lock, std::chrono::seconds(20), condition);
    }

    std::mutex mutex_;
    std::condition_variable came_;
    FrameImagePtr picture_;
    Arrivals arrivals_;
};

/** Colours need no reading of files, so that what is measured is the way of the picture. */
inline Projection colourEdit(int effects = 1)
{
    Projection projection;
    projection.profile.width = kWidth;
    projection.profile.height = kHeight;
    projection.length = kFrames;
    projection.clips.push_back({"clip", "color", "#ff204060", 0, kFrames - 1, {}, {}});
    for (int i = 0; i < effects; ++i)
        projection.clips[0].filters.push_back(
            {"effect" + std::to_string(i), "brightness", 0, kFrames - 1, {{"level", "0.98"}}});
    ProjectedEntry entry;
    entry.kind = ProjectedEntry::Kind::Clip;
    entry.length = kFrames;
    entry.first = {"clip", 0, kFrames - 1};
    projection.tracks.push_back({"track", "", ProjectedTrack::Hide::Nothing, {entry}});
    return projection;
}

inline std::shared_ptr<EngineHost> benchHost()
{
    static const auto shared = std::make_shared<EngineHost>(ORIBUND_ENGINE_PROGRAM);
    return shared;
}

} // namespace workbench
