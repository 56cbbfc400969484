#pragma once

#include "workbench/engine/protocol/ExportTypes.h"

#include <vector>

namespace workbench
{

class MltSession;

/** The kinds of file that can be written here, in the order in which they are offered. */
std::vector<ExportPreset> exportPresets(MltSession& session);

} // namespace workbench
