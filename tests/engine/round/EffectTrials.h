#pragma once

#include "workbench/model/projection/Projection.h"

#include <string>
#include <vector>

namespace workbench
{

struct EffectDescription;

/** A setting of an effect that a person can make with its controls. */
struct EffectTrial {
    std::string what; ///< "av.sigma=1024 then 0.5": for a developer
    ProjectedProperties properties;
};

/**
 * The defaults first, then each parameter alone at both ends, in the middle, at each item, and moving from end to end,
 * then all parameters at their ends, then `chances` settings at random, the same ones every time.
 */
std::vector<EffectTrial> trialsOf(const EffectDescription& effect, int length, int chances);

} // namespace workbench
