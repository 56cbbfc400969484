#pragma once

#include "workbench/model/EditData.h"

namespace workbench
{

class EffectCatalogue;
class Warnings;

/**
 * Warns of values that lie outside the range that their parameter has now: an older version may have had a wider one.
 * The edit that is made of the data takes the nearest value that is allowed. Keyframes stay as they are.
 */
void warnOfRanges(const EditData& edit, const EffectCatalogue& catalogue, Warnings& warnings);

} // namespace workbench
