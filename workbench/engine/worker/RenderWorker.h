#pragma once

#include "workbench/engine/protocol/EngineTypes.h"
#include "workbench/engine/protocol/TraceMarks.h"
#include "workbench/engine/worker/Player.h"
#include "workbench/model/projection/Projection.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
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

/**
 * The thread that renders and plays, and the mailbox in front of it. What waits in the mailbox is merged: the latest
 * edit, request and transport state win.
 *
 * Before each piece of work it says in the marks until when that has to be done. Whoever reads them ends the process
 * when it is late: a thread that is stuck in an effect cannot be ended in any other way.
 */
class RenderWorker
{
public:
    struct FrameRequest {
        int frame = 0;
        int maxWidth = 0;
        int maxHeight = 0;
    };

    /** The marks outlive the worker. Pictures that are handed to the callbacks are in that memory. */
    RenderWorker(std::shared_ptr<MltSession> session, EngineCallbacks callbacks, EngineOptions options,
                 TraceMarks& marks, PictureMemory memory = ownMemory);

    /** Waits for the work in hand. */
    ~RenderWorker();

    RenderWorker(const RenderWorker&) = delete;
    RenderWorker& operator=(const RenderWorker&) = delete;

    /** `bypassed`: ids of effects that are left out. */
    void load(std::shared_ptr<const Projection> projection, std::set<std::string> bypassed, std::uint64_t revision);
    void update(std::vector<PropertyUpdate> updates, std::uint64_t revision);
    void request(FrameRequest request);
    void setPlaying(bool playing);

private:
    struct Mail {
        std::shared_ptr<const Projection> projection;
        std::set<std::string> bypassed;
        std::vector<PropertyUpdate> updates;
        std::optional<FrameRequest> request;
        std::optional<bool> playing;
        std::optional<Player::Shown> shown;
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
    void rebuild(Mail& mail);
    void applyUpdates(const std::vector<PropertyUpdate>& updates);
    void render(const FrameRequest& request);
    void startPlaying();
    void stopPlaying();
    void handleShown(const Player::Shown& shown);
    void tellProblems();
    void setFrame(int frame);

    const std::shared_ptr<MltSession> session_;
    const EngineCallbacks callbacks_;
    const EngineOptions options_;
    TraceMarks& marks_;
    const PictureMemory memory_;

    std::mutex mailMutex_;
    std::condition_variable mailArrived_;
    Mail mail_;

    // The thread's own.
    std::unique_ptr<MltGraph> graph_;
    std::unique_ptr<Player> player_;
    FrameRequest size_;
    int frame_ = 0;
    std::uint64_t revision_ = 0;
    TraceMarks::Clock::time_point deadline_ = TraceMarks::Clock::time_point::max(); // as the marks have it

    std::thread thread_; // last: it uses all of the above
};

} // namespace workbench
