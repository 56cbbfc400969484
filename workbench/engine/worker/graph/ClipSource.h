#pragma once

#include "workbench/engine/worker/graph/LazyProducer.h"
#include "workbench/model/projection/Projection.h"

#include <functional>
#include <memory>
#include <string>

namespace workbench
{

/**
 * What one clip of an edit shows, as a producer that is always there and takes the file only while pictures are asked
 * of it. What cannot be opened shows a dark red picture instead.
 */
class ClipSource
{
public:
    /** `report` says why the source cannot be opened, once; on the thread that asks for the frame. */
    ClipSource(std::shared_ptr<Mlt::Profile> profile, const ProjectedClip& clip, std::shared_ptr<OpenSources> sources,
               std::function<void(const std::string& problem)> report);
    ~ClipSource();

    ClipSource(const ClipSource&) = delete;
    ClipSource& operator=(const ClipSource&) = delete;

    /** For effects and cuts. Null when the framework has no room for it. */
    Mlt::Producer* producer() const { return producer_.get(); }

    /** Whether it shows what that clip is to show, and can go on doing so. */
    bool serves(const ProjectedClip& clip) const;

    /** So long as the clip is now; no shorter than before. */
    void stretchTo(const ProjectedClip& clip);

    /** Whether there is such a file at all, or the picture is made. */
    bool isThere() const;

    /** Opens the source now, before the first frame is asked for. */
    void open();

    /** Null while it is not open. */
    Mlt::Producer* opened() const;

private:
    struct Origin;

    static OpenSources::Source openOrigin(const std::shared_ptr<Mlt::Profile>& profile, Origin& origin);

    std::shared_ptr<Mlt::Profile> profile_; // outlives what is made with it
    std::shared_ptr<OpenSources> sources_;
    std::shared_ptr<Origin> origin_;
    std::shared_ptr<OpenSources::Place> place_;
    std::unique_ptr<Mlt::Producer> producer_;
};

} // namespace workbench
