#pragma once

#include <string>
#include <vector>

namespace workbench
{

/**
 * What the libraries of a worker read on any system: themselves and their data, plug-ins, fonts and, with `sound`, what
 * leads to the sound server. Taken from the environment of this process; not all of it need be there.
 */
std::vector<std::string> readablePlaces(bool sound);

/** Devices that are read and written: of the graphics processor and, with `sound`, of the sound cards. */
std::vector<std::string> devicePlaces(bool sound);

} // namespace workbench
