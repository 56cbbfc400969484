#include "oribund/host/canvas/Palette.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

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
    : colours_(standard())
{
}

const Kt::Ptr<const Palette::Colours>& Palette::standard()
{
    static const auto kStandard = [] {
        const auto colours = Kt::makePtr<Colours>();
        const auto set = [&](PaletteRole role, std::uint32_t rgb) {
            colours->of[static_cast<std::size_t>(role)] = Colour::fromRGB(rgb);
        };
        set(PaletteRole::Window, 0x2b2b2b);
        set(PaletteRole::WindowText, 0xd2d2d2);
        set(PaletteRole::HeadingText, 0xefefef);
        set(PaletteRole::DisabledText, 0x858585);
        set(PaletteRole::Field, 0x1e1e1e);
        set(PaletteRole::FieldText, 0xdedede);
        set(PaletteRole::Button, 0x3a3a3a);
        set(PaletteRole::ButtonText, 0xdedede);
        set(PaletteRole::Border, 0x545454);
        set(PaletteRole::Accent, 0x3d6d96);
        set(PaletteRole::AccentText, 0xffffff);
        set(PaletteRole::Focus, 0x6fa6d6);
        return Kt::Ptr<const Colours>(colours);
    }();
    return kStandard;
}

void Palette::setColour(PaletteRole role, const Colour& colour)
{
    const auto changed = Kt::makePtr<Colours>(*colours_);
    changed->of[static_cast<std::size_t>(role)] = colour;
    colours_ = changed;
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
