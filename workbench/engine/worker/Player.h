#pragma once

#include "workbench/engine/protocol/TraceMarks.h"
#include "workbench/engine/worker/graph/FrameRendering.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>

namespace Mlt
{
class Consumer;
class Event;
class Filter;
class Producer;
class Profile;
} // namespace Mlt

namespace workbench
{

/**
 * Plays a producer in real time, with sound, and hands out the pictures that are shown. Created, used and destroyed by
 * the engine's thread; destroying stops it.
 */
class Player
{
public:
    struct Shown {
        int frame = 0;
        std::shared_ptr<FrameImage> image; ///< empty for a frame that was dropped to keep up
        bool atEnd = false;
    };

    struct Surroundings {
        TraceMarks& marks;               ///< told until when the next frame has to be shown
        std::chrono::milliseconds limit; ///< from one frame to the next
        PictureMemory memory;
    };

    /** `shown` is called on a thread of the framework and must return at once. */
    Player(Mlt::Profile& profile, Mlt::Producer& producer, FrameSize size, Surroundings surroundings,
           std::function<void(Shown)> shown);
    ~Player();

    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    /** False when playing cannot begin. */
    bool start(int fromFrame);

    /** Goes on from another frame. */
    void seek(int frame);

    /** Throws away what was rendered ahead, so that a changed effect shows at once. */
    void discardAhead();

    /** False on a machine without a sound device; playing is silent there. Decided before the first player is made. */
    static bool prepareSound(bool wanted);

private:
    struct Listener;

    void frameShown(void* frame);
    void expectFrame();

    Mlt::Producer& producer_;
    const Surroundings surroundings_;
    std::function<void(Shown)> shown_;
    std::unique_ptr<Mlt::Filter> scaler_;
    std::unique_ptr<Mlt::Consumer> consumer_;
    std::unique_ptr<Mlt::Event> event_;
    std::atomic<bool> started_{false};
};

} // namespace workbench
