#pragma once

#include "oribund/host/base/LightweightString.h"

namespace workbench::PreferenceKeys
{

// What the workbench remembers between two runs.
inline constexpr const char* kWindowGeometry = "Workbench : window geometry"; ///< base 64
inline constexpr const char* kWindowState = "Workbench : window state";       ///< base 64
inline constexpr const char* kLastProject = "Workbench : last project";
inline constexpr const char* kToldGaps = "Workbench : told gaps of confinement";
inline constexpr const char* kCueColour = "Workbench : cue colour";     ///< of the next cue, by name
inline constexpr const char* kShowHandles = "Workbench : show handles"; ///< in the viewer's picture

/** The folder last used for a kind of file. */
inline oribund::String folder(const char* what)
{
    return oribund::String("Workbench : folder of ") + what;
}

} // namespace workbench::PreferenceKeys
