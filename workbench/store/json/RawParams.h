#pragma once

#include "workbench/model/EditData.h"

#include <optional>

namespace workbench
{

struct EffectDescription;
struct ParamDescription;
class Warnings;

/**
 * A parameter from the texts of its service's properties, animations included: the reverse of what plays it. Empty
 * where the properties do not say, or say what the parameter cannot hold. `length`: of the segment, in frames.
 */
std::optional<ParamData> paramFromRaw(const ParamDescription& description, const PropertyList& properties, int length);

/**
 * Takes out of a service's properties those that the description knows, as parameters. What is left in `properties`
 * has no control.
 */
std::vector<ParamData> takeParams(const EffectDescription& description, PropertyList& properties, int length);

} // namespace workbench
