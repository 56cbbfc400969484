#pragma once

#include "workbench/model/EditData.h"
#include "workbench/model/projection/Projection.h"

#include "oribund/host/base/IdStamp.h"

#include <vector>

namespace workbench
{

class EditModel;

/** The whole edit. */
Projection project(const EditModel& edit);

/**
 * What brings one parameter of an effect up to date in a projection that is otherwise right: cheap, for every move of a
 * drag. Empty for an effect or parameter that the edit does not hold.
 */
std::vector<PropertyUpdate> projectParam(const EditModel& edit, const oribund::IdStamp& effect,
                                         const oribund::IdStamp& param);

/** What switches an effect on or off as the edit says. */
std::vector<PropertyUpdate> projectEnabled(const EditModel& edit, const oribund::IdStamp& effect);

/** Ids in a projection. */
std::string filterId(ObjectId effect);
std::string clipId(ObjectId segment);
std::string trackId(ObjectId track);

} // namespace workbench
