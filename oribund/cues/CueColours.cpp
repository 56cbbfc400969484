#include "oribund/cues/CueColours.h"

#include "oribund/host/services/TextIds.h"

namespace oribund
{

namespace
{

constexpr CueColour kColours[] = {
    {L"Red", Colour::fromRGB(0xe5534b), TextIds::kRed},       {L"Orange", Colour::fromRGB(0xe8914a), TextIds::kOrange},
    {L"Yellow", Colour::fromRGB(0xe3c84b), TextIds::kYellow}, {L"Green", Colour::fromRGB(0x6cbf5f), TextIds::kGreen},
    {L"Cyan", Colour::fromRGB(0x4fc1c7), TextIds::kCyan},     {L"Blue", Colour::fromRGB(0x6a9ff0), TextIds::kBlue},
    {L"Purple", Colour::fromRGB(0xb083e8), TextIds::kPurple}, {L"White", Colour::fromRGB(0xe2e6ea), TextIds::kWhite},
};

} // namespace

std::span<const CueColour> cueColours()
{
    return kColours;
}

} // namespace oribund
