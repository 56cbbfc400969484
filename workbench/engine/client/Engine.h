#pragma once

#include "workbench/engine/protocol/EngineTypes.h"
#include "workbench/model/projection/Projection.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace workbench
{

class EngineHost;

/**
 * Renders and plays an edit, in a worker.
 *
 * Every member returns at once, whatever the worker is doing; of several requests of one kind that wait, the latest
 * wins. The members are called from one thread, the user interface's.
 *
 * A worker that dies, or does not come back in time, is replaced by another one that goes on from the same state. The
 * effect that it was in is left out from then on, and told as a problem. It is tried again once it is set differently,
 * but not after it has failed for the third time: then only retryEffects() brings it back.
 */
class Engine
{
public:
    Engine(std::shared_ptr<EngineHost> host, EngineCallbacks callbacks, EngineOptions options = {});

    /** Ends playing and rendering, and the worker. No callback runs after it. */
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

    /** An effect that was left out is tried again; all of them for an empty id. Then the last frame is rendered anew.
     */
    void retryEffects(const std::string& id = {});

    /** The effects of the edit that are left out for now, with all that was loaded and updated. */
    std::vector<LeftOutEffect> leftOut() const;

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace workbench
