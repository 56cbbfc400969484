#include "workbench/engine/client/WorkerEndText.h"

#include "workbench/model/projection/ProjectionQueries.h"

#include <string>

namespace workbench
{

const ProjectedFilter* effectToBlame(const WorkerEnd& end, const Projection& edit)
{
    for (const ProjectedClip& clip : edit.clips)
        for (const ProjectedFilter& filter : clip.filters)
            if (end.effect != 0 && effectMark(filter.id) == end.effect)
                return &filter;
    return nullptr;
}

EngineProblem describe(const WorkerEnd& end, const Projection& edit)
{
    using Way = WorkerEnd::Way;
    using Kind = EngineProblem::Kind;
    EngineProblem problem;
    problem.effects = serviceNames(effectsAt(edit, end.frame));
    const std::string at = " at " + timeCodeAt(edit, end.frame);
    if (const ProjectedFilter* const effect = effectToBlame(end, edit)) {
        problem.subject = effect->id;
        problem.kind = end.way == Way::Hung ? Kind::EffectHung : Kind::EffectCrashed;
        problem.message =
            "The effect " + nameInQuotes(*effect) + (end.way == Way::Hung ? " did not answer" : " crashed") + at + ".";
    } else if (end.way == Way::Hung) {
        problem.kind = Kind::MediaHung;
        problem.message = "The picture" + at + " did not come in time.";
    } else if (end.way == Way::Crashed) {
        problem.kind = Kind::EngineEnded;
        problem.message = "The engine crashed" + at + ".";
    } else if (end.way == Way::Silent) {
        problem.kind = Kind::EngineEnded;
        problem.message = "The engine did not answer any more.";
    } else {
        problem.kind = Kind::EngineEnded;
        problem.message = "The engine was ended from outside.";
    }
    return problem;
}

} // namespace workbench
