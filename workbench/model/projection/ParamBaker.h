#pragma once

#include "workbench/model/projection/Projection.h"

namespace oribund
{
class EffectValParamBase;
class Graph1dBase;
} // namespace oribund

namespace workbench
{

struct ParamDescription;

/**
 * The frames over which a parameter is written, relative to its segment's first frame: `first` is negative where a
 * transition shows frames before it. Written keys count from `first`.
 */
struct BakeSpan {
    int length = 1; ///< of the segment: effect time 0..1
    int first = 0;
    int last = 0;
};

/**
 * Appends the properties with which a parameter's setting is given to its service. At every whole frame of the span
 * they have exactly the value of the parameter: straight pieces are written as their ends, all else frame by frame. A
 * curved piece of more than a quarter of an hour is written as straight ones, at most 1e-7 of the range of the
 * keyframes from it.
 */
void bakeParam(const ParamDescription& description, const oribund::EffectValParamBase& param, const BakeSpan& span,
               ProjectedProperties& properties);

} // namespace workbench
