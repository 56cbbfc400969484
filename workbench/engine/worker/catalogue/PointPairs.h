#pragma once

#include "workbench/model/EffectDescription.h"

#include <vector>

namespace workbench
{

/**
 * Makes one point of two numbers that follow each other and are the X and Y of a place, in parts of the frame. What
 * only looks like a place, such as a size, is left as it is.
 */
void pairPoints(std::vector<ParamDescription>& params);

} // namespace workbench
