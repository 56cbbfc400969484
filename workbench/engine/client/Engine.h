#pragma once

#include "workbench/engine/protocol/EngineTypes.h"
#include "workbench/model/projection/Projection.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace workbench
{

class MltSession;

/**
 * Renders and plays an edit on a thread of its own.
 *
 * Every member returns at once, whatever the thread is doing; of several requests of one kind that wait, the latest
 * wins. The members are called from one thread, the user interface's.
 *
 * A watchdog looks after the rendering thread. When a frame does not come in time, the thread is left behind, the
 * effect that it was stuck in is bypassed, and a new thread goes on from the same state.
 */
class Engine
{
public:
    Engine(std::shared_ptr<MltSession> session, EngineCallbacks callbacks, EngineOptions options = {});

    /** Ends playing and rendering. No callback runs after it. Waits for the frame in work, up to the frame timeout. */
    ~Engine();

    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    /** Replaces the edit. Media that it shares with the one before stay open. Returns the revision of this state. */
    std::uint64_t load(Projection projection);

    /** Writes values into effects and transitions of the loaded edit, without building it anew. Returns the revision.
     */
    std::uint64_t update(std::vector<PropertyUpdate> updates);

    /**
     * Asks for the picture at a frame, no larger than given, in the shape of the edit's profile. While playing, playing
     * goes on from there.
     */
    void requestFrame(int frame, int maxWidth, int maxHeight);

    /** Plays from the frame last requested or shown; pictures arrive in the size last requested. */
    void play();

    void pause();

    /** Effects that were bypassed because they hung are tried again at the next load. */
    void forgiveEffects();

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace workbench
