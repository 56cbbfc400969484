#pragma once

#include <string>
#include <vector>

namespace workbench
{

/** The films of a folder, by name; empty for a folder that cannot be read. */
std::vector<std::string> mediaIn(const std::string& folder);

/** Paints a picture with colours, greys, fine lines and soft shapes into a folder, for when there is no media. Its
 * path. */
std::string paintTestCard(const std::string& folder);

} // namespace workbench
