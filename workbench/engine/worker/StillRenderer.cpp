#include "workbench/engine/worker/StillRenderer.h"

#include "workbench/engine/worker/graph/MltGraph.h"
#include "workbench/engine/worker/graph/MltSession.h"

#include <mlt++/Mlt.h>

#include <algorithm>
#include <utility>

namespace workbench
{

StillRenderer::StillRenderer(std::shared_ptr<MltSession> session, PictureMemory memory)
    : session_(std::move(session))
    , memory_(std::move(memory))
{
}

StillRenderer::~StillRenderer() = default;

std::shared_ptr<FrameImage> StillRenderer::render(const Projection& edit, int frame, int maxWidth, int maxHeight)
{
    // What an edit lacks is told only once, while it is made.
    if (edit_ != edit || !problem_.empty()) {
        problem_.clear();
        MltGraph::Options options;
        options.former = std::move(graph_);
        graph_ = MltGraph::build(session_, edit, std::move(options));
        edit_ = edit;
    }
    const int last = std::max(0, graph_->length() - 1);
    std::shared_ptr<FrameImage> image = renderFrame(graph_->producer(), std::min(frame, last),
                                                    fitFrame(graph_->profile(), maxWidth, maxHeight), memory_);
    noteProblems();
    return image;
}

void StillRenderer::noteProblems()
{
    for (const EngineProblem& problem : graph_->takeProblems())
        if (problem_.empty() && problem.kind != EngineProblem::Kind::EffectSilenced)
            problem_ = problem.message;
}

} // namespace workbench
