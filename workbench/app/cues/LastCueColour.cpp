#include "workbench/app/cues/LastCueColour.h"

#include "oribund/cues/CueColours.h"
#include "oribund/host/services/EditorPreferences.h"
#include "workbench/app/session/PreferenceKeys.h"

#include <algorithm>

namespace workbench
{

using oribund::Colour;
using oribund::CueColour;

Colour lastCueColour()
{
    const auto colours = oribund::cueColours();
    const CueColour& standard = colours[2];
    const oribund::WString name =
        oribund::prefs().getPreference(PreferenceKeys::kCueColour, oribund::WString(standard.name));
    const auto found =
        std::find_if(colours.begin(), colours.end(), [&name](const CueColour& one) { return name == one.name; });
    return found == colours.end() ? standard.colour : found->colour;
}

void rememberCueColour(const Colour& colour)
{
    for (const CueColour& one : oribund::cueColours())
        if (one.colour == colour)
            oribund::prefs().setPreference(PreferenceKeys::kCueColour, oribund::WString(one.name));
}

} // namespace workbench
