#pragma once

#include "oribund/host/effects/params/ParamPresentationDetails.h"
#include "workbench/model/EffectDescription.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace workbench
{

using Presentation = std::vector<oribund::ParamPresentationDetails>;

/** The value of a list or switch of the effect, by its place among the parameters, as its service has it. */
using ValueText = std::function<std::string(std::size_t param)>;

/**
 * In what order and under which headings the parameters of an effect are shown while its lists and switches have these
 * values. A group keeps its id whichever of its parameters are shown.
 */
Presentation presentationOf(const EffectDescription& description, const ValueText& valueOf);

/** Whether values decide what is shown. */
bool hasConditions(const EffectDescription& description);

/** Whether the value of this parameter does. */
bool decidesForOthers(const EffectDescription& description, std::string_view property);

} // namespace workbench
