#include "oribund/cues/CueColours.h"

namespace oribund
{

namespace
{

constexpr CueColour kColours[] = {
    {L"Red", Colour::fromRGB(0xe5534b)},    {L"Orange", Colour::fromRGB(0xe8914a)},
    {L"Yellow", Colour::fromRGB(0xe3c84b)}, {L"Green", Colour::fromRGB(0x6cbf5f)},
    {L"Cyan", Colour::fromRGB(0x4fc1c7)},   {L"Blue", Colour::fromRGB(0x6a9ff0)},
    {L"Purple", Colour::fromRGB(0xb083e8)}, {L"White", Colour::fromRGB(0xe2e6ea)},
};

} // namespace

std::span<const CueColour> cueColours()
{
    return kColours;
}

} // namespace oribund
