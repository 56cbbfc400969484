#pragma once

#include "workbench/engine/client/EngineProcess.h"
#include "workbench/engine/protocol/EngineTypes.h"
#include "workbench/model/projection/Projection.h"

namespace workbench
{

/** The effect that a worker ended in; null when it was none, or none of the edit any more. */
const ProjectedFilter* effectToBlame(const WorkerEnd& end, const Projection& edit);

/** What came of it, for a person, without what is done about it: "The effect "x" crashed at 00:00:00:07." */
EngineProblem describe(const WorkerEnd& end, const Projection& edit);

} // namespace workbench
