#include "workbench/app/CueColours.h"

#include "oribund/host/services/EditorPreferences.h"
#include "workbench/app/PreferenceKeys.h"

#include <algorithm>

namespace workbench
{

namespace
{
using oribund::Colour;

constexpr CueColour kColours[] = {
    {"Red", Colour::fromRGB(0xe5534b)},    {"Orange", Colour::fromRGB(0xe8914a)}, {"Yellow", Colour::fromRGB(0xe3c84b)},
    {"Green", Colour::fromRGB(0x6cbf5f)},  {"Cyan", Colour::fromRGB(0x4fc1c7)},   {"Blue", Colour::fromRGB(0x6a9ff0)},
    {"Purple", Colour::fromRGB(0xb083e8)}, {"White", Colour::fromRGB(0xe2e6ea)},
};
} // namespace

std::span<const CueColour> cueColours()
{
    return kColours;
}

Colour lastCueColour()
{
    const oribund::String name = oribund::prefs().getPreference(PreferenceKeys::kCueColour, kColours[2].name);
    const auto* const found = std::find_if(std::begin(kColours), std::end(kColours),
                                           [&name](const CueColour& one) { return name == one.name; });
    return found == std::end(kColours) ? kColours[2].colour : found->colour;
}

void rememberCueColour(const Colour& colour)
{
    for (const CueColour& one : kColours)
        if (one.colour == colour)
            oribund::prefs().setPreference(PreferenceKeys::kCueColour, one.name);
}

} // namespace workbench
