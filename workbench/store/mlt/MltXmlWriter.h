#pragma once

#include "workbench/model/EditData.h"
#include "workbench/model/projection/Projection.h"

#include <map>
#include <string>

namespace pugi
{
class xml_node;
}

namespace workbench
{

class MediaPaths;

/** Properties that are written in addition, by the id of the clip, filter or track of the projection that gets them. */
using ExtraProperties = std::map<std::string, PropertyList>;

/** The id of the tractor that is the whole edit. */
inline constexpr const char* kEditTractor = "edit";

/** Writes a projection as MLT XML into an `mlt` element: what is played is the same as what the engine plays. */
void writeMlt(const Projection& projection, const MediaPaths& paths, const ExtraProperties& extra, pugi::xml_node mlt);

/** The text without the characters that XML has no way to say. */
std::string xmlText(const std::string& text);

} // namespace workbench
