#pragma once

#include "workbench/engine/worker/catalogue/RawMetadata.h"
#include "workbench/model/EffectDescription.h"

#include <optional>

namespace workbench
{

/**
 * A parameter as it is offered to a person. Empty for what no control can set (free text, files, rectangles), what only
 * the service writes, and what is obsolete.
 */
std::optional<ParamDescription> mapParameter(const RawParam& raw);

} // namespace workbench
