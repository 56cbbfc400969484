#pragma once

#include "workbench/engine/worker/graph/FrameRendering.h"
#include "workbench/model/projection/Projection.h"

#include <memory>
#include <optional>
#include <string>

namespace workbench
{

class MltGraph;
class MltSession;

/**
 * Renders single pictures of edits that nobody plays: thumbnails, and whatever else is worked out from a picture. The
 * edit of the last picture stays prepared, so that the next picture of it costs no more than rendering. Used by one
 * thread at a time; it waits for the picture.
 */
class StillRenderer
{
public:
    /** Pictures are put into that memory. */
    explicit StillRenderer(std::shared_ptr<MltSession> session, PictureMemory memory = ownMemory);
    ~StillRenderer();

    StillRenderer(const StillRenderer&) = delete;
    StillRenderer& operator=(const StillRenderer&) = delete;

    /** No larger than that, in the shape of the edit's profile. Null when there is none; problem() may say why. */
    std::shared_ptr<FrameImage> render(const Projection& edit, int frame, int maxWidth, int maxHeight);

    /** Why the last picture is not what the edit says, for a person; empty when it is. */
    const std::string& problem() const { return problem_; }

private:
    void noteProblems();

    const std::shared_ptr<MltSession> session_;
    const PictureMemory memory_;
    std::optional<Projection> edit_; // that the graph is of
    std::unique_ptr<MltGraph> graph_;
    std::string problem_;
};

} // namespace workbench
