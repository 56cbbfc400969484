#pragma once

#include "workbench/model/EditData.h"

#include <optional>

namespace workbench
{

struct EffectDescription;
struct ParamDescription;
class Warnings;

/** The segment that an effect is on, in frames, and where in it the first frame of the effect's keyframes lies. */
struct KeySpan {
    int length = 1;
    int firstKey = 0;
    FormatData format = {}; ///< of the edit, for keys that are times
};

/**
 * A parameter from the texts of its service's properties, animations included: the reverse of what plays it. Empty
 * where the properties do not say, or say what the parameter cannot hold.
 */
std::optional<ParamData> paramFromRaw(const ParamDescription& description, const PropertyList& properties,
                                      const KeySpan& span);

/**
 * Takes out of a service's properties those that the description knows, as parameters. What is left in `properties`
 * has no control.
 */
std::vector<ParamData> takeParams(const EffectDescription& description, PropertyList& properties, const KeySpan& span);

} // namespace workbench
