#pragma once

#include "workbench/engine/protocol/ExportTypes.h"
#include "workbench/model/projection/Projection.h"

#include <functional>
#include <memory>

namespace workbench
{

class MltSession;
class TraceMarks;

/**
 * Renders a range of an edit into a file, and returns when that is done. It has no way to end early: the process is
 * ended. The marks tell which frame it is at, and until when the next one has to be there.
 *
 * It writes straight into the file, and leaves what a failed export has written to whoever gave the path.
 */
ExportResult runExport(const std::shared_ptr<MltSession>& session, Projection projection,
                       const ExportSettings& settings, TraceMarks& marks,
                       const std::function<void(int framesDone, int framesTotal)>& progress);

} // namespace workbench
