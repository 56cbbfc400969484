#pragma once

#include "workbench/model/projection/Projection.h"

#include <string>
#include <string_view>
#include <vector>

namespace workbench
{

/** The effects that are at work on a frame of the edit, bottom track first; disabled ones and the filters of
    masks left out. */
std::vector<const ProjectedFilter*> effectsAt(const Projection& projection, int frame);

/** Null when there is none. */
const ProjectedFilter* findEffect(const Projection& projection, std::string_view id);

/** The services of some effects, for a message. */
std::vector<std::string> serviceNames(const std::vector<const ProjectedFilter*>& effects);

/** What a message calls an effect, in quotes. */
std::string nameInQuotes(const ProjectedFilter& effect);

/** The time code of a frame of the edit, for a message. */
std::string timeCodeAt(const Projection& projection, int frame);

/** A name as it stands in a message. */
std::string inQuotes(std::string_view name);

} // namespace workbench
