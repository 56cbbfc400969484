#include "oribund/host/canvas/Palette.h"

#include <cmath>

namespace oribund
{

namespace
{

double linear(double encoded)
{
    const double v = std::clamp(encoded, 0.0, 1.0);
    return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
}

double luminance(const Colour& c)
{
    return 0.2126 * linear(c.r) + 0.7152 * linear(c.g) + 0.0722 * linear(c.b);
}

} // namespace

Palette::Palette()
{
    setColour(PaletteRole::Window, Colour::fromRGB(0x2b2b2b));
    setColour(PaletteRole::WindowText, Colour::fromRGB(0xd2d2d2));
    setColour(PaletteRole::HeadingText, Colour::fromRGB(0xefefef));
    setColour(PaletteRole::DisabledText, Colour::fromRGB(0x858585));
    setColour(PaletteRole::Field, Colour::fromRGB(0x1e1e1e));
    setColour(PaletteRole::FieldText, Colour::fromRGB(0xdedede));
    setColour(PaletteRole::Button, Colour::fromRGB(0x3a3a3a));
    setColour(PaletteRole::ButtonText, Colour::fromRGB(0xdedede));
    setColour(PaletteRole::Border, Colour::fromRGB(0x545454));
    setColour(PaletteRole::Accent, Colour::fromRGB(0x3d6d96));
    setColour(PaletteRole::AccentText, Colour::fromRGB(0xffffff));
    setColour(PaletteRole::Focus, Colour::fromRGB(0x6fa6d6));
}

double contrastRatio(const Colour& a, const Colour& b)
{
    const double la = luminance(a);
    const double lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

Colour readableOn(const Colour& background)
{
    const Colour dark = Colour::fromRGB(0x000000);
    const Colour light = Colour::fromRGB(0xffffff);
    return contrastRatio(dark, background) >= contrastRatio(light, background) ? dark : light;
}

} // namespace oribund
