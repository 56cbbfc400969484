#pragma once

#include "workbench/model/EditData.h"
#include "workbench/model/projection/ParamBaker.h"
#include "workbench/model/projection/Projection.h"

#include <string_view>
#include <vector>

namespace workbench
{

struct EffectDescription;
class ModelEffect;

/**
 * A mask as filters. The first keeps the picture as it is before the effect, the second cuts the shape out of what the
 * effect has made, the third lays that over what was kept. Outside the shape the picture stays exactly as it was, and
 * inside it is what the effect makes: the shape is drawn after it, so that an effect that moves or blurs the picture
 * leaves the shape where it is. Where an effect has moved the picture away, the picture shows as it was. An effect that
 * works in less than full colour resolution gets its picture by way of full resolution, which may round differently.
 * The second without the third leaves holes, so that the three come and go together, and with their effect.
 */
struct MaskFilters {
    ProjectedFilter before;
    ProjectedFilter shape; ///< to be applied after the effect, and `after` behind it
    ProjectedFilter after;
};

/** `effect` is the one that is masked, as it is projected. */
MaskFilters maskFilters(const ModelEffect& mask, const ProjectedFilter& effect, const BakeSpan& span);

/** What brings one parameter of a mask up to date. */
std::vector<PropertyUpdate> maskParamUpdates(const ModelEffect& mask, int index, const BakeSpan& span);

/** What switches a mask off, together with its effect or alone. */
std::vector<PropertyUpdate> maskSwitchUpdates(const ModelEffect& mask, bool effectEnabled);

/** What one of the three filters may be told; null for any other service. */
const EffectDescription* maskFilterDescription(std::string_view service);

} // namespace workbench
