#pragma once

#include "workbench/engine/protocol/EngineTypes.h"
#include "workbench/engine/worker/Player.h"
#include "workbench/engine/worker/graph/FilterTrace.h"
#include "workbench/model/projection/Projection.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace workbench
{

class MltGraph;
class MltSession;

struct FrameRequest {
    int frame = 0;
    int maxWidth = 0;
    int maxHeight = 0;
};

/**
 * The thread that renders and plays, and the mailbox in front of it. What waits in the mailbox is merged: the latest
 * edit, request and transport state win.
 *
 * A worker that is stuck is abandoned: it is silent from then on, and its thread keeps alive what it uses.
 */
class RenderWorker : public std::enable_shared_from_this<RenderWorker>
{
public:
    using Clock = std::chrono::steady_clock;

    struct Stall {
        std::string effect; ///< id; empty when no effect was at work
        int frame = 0;
    };

    RenderWorker(std::shared_ptr<MltSession> session, EngineCallbacks callbacks, EngineOptions options,
                 std::set<std::string> bypassed);
    ~RenderWorker();

    void start();

    void load(std::shared_ptr<const Projection> projection, std::uint64_t revision);
    void update(std::vector<PropertyUpdate> updates, std::uint64_t revision);
    void request(FrameRequest request);
    void setPlaying(bool playing);
    void report(EngineProblem problem);
    void setBypassed(std::set<std::string> bypassed);

    /** What the thread is stuck in, if it is. Any thread. */
    std::optional<Stall> findStall() const;

    /** Ends the thread. False when it did not end within the time; then abandon(). */
    bool finish(std::chrono::milliseconds patience);

    /** No callback comes after this. */
    void abandon();

private:
    struct Mail {
        std::shared_ptr<const Projection> projection;
        std::vector<PropertyUpdate> updates;
        std::optional<FrameRequest> request;
        std::optional<bool> playing;
        std::vector<EngineProblem> problems;
        std::optional<Player::Shown> shown;
        std::optional<std::set<std::string>> bypassed;
        std::uint64_t revision = 0;
        bool quit = false;
        bool any = false;
    };

    class Busy;

    template <class Change>
    void post(Change&& change);

    void run();
    Mail takeMail();
    void handle(Mail& mail);
    void rebuild(const Mail& mail);
    void applyUpdates(const std::vector<PropertyUpdate>& updates);
    void render(const FrameRequest& request);
    void startPlaying();
    void stopPlaying();
    void handleShown(const Player::Shown& shown);

    template <class Callback, class... Arguments>
    void call(const Callback& callback, Arguments&&... arguments);

    const std::shared_ptr<MltSession> session_;
    const EngineCallbacks callbacks_;
    const EngineOptions options_;
    FilterTrace trace_;

    std::mutex mailMutex_;
    std::condition_variable mailArrived_;
    Mail mail_;

    std::mutex callbackMutex_;
    bool silent_ = false;

    std::atomic<Clock::time_point> deadline_{Clock::time_point::max()};
    std::atomic<int> frame_{0};
    mutable std::mutex playerMutex_; // guards the pointer, not the player
    std::unique_ptr<Player> player_;

    // The thread's own.
    std::set<std::string> bypassed_;
    std::unique_ptr<MltGraph> graph_;
    FrameRequest size_;
    std::uint64_t revision_ = 0;

    std::thread thread_;
    std::mutex endMutex_;
    std::condition_variable ended_;
    bool hasEnded_ = false;
};

} // namespace workbench
