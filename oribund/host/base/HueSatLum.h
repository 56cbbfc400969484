#pragma once

#include "oribund/host/base/Colour.h"

#include <algorithm>

namespace oribund
{

/**
 * A colour by the three axes that soft ranges are set on. Who measures colours, draws the axes or selects by them goes
 * by these rules.
 */
struct HueSatLum {
    double hue = 0.0;        ///< degrees, 0 (red) up to 360, that of HSV; 0 for a grey
    double saturation = 0.0; ///< 0 to 1, that of HSV
    double luminance = 0.0;  ///< 0 to 1: Colour::luma(), of the encoded components

    static constexpr HueSatLum of(const Colour& colour) noexcept
    {
        const double most = std::max({colour.r, colour.g, colour.b});
        const double chroma = most - std::min({colour.r, colour.g, colour.b});
        HueSatLum axes{0.0, most > 0.0 ? chroma / most : 0.0, colour.luma()};
        if (chroma <= 0.0)
            return axes;
        if (most == colour.r)
            axes.hue = 60.0 * (colour.g - colour.b) / chroma;
        else if (most == colour.g)
            axes.hue = 120.0 + 60.0 * (colour.b - colour.r) / chroma;
        else
            axes.hue = 240.0 + 60.0 * (colour.r - colour.g) / chroma;
        if (axes.hue < 0.0)
            axes.hue += 360.0;
        return axes;
    }
};

/** The display colour of a hue in degrees, from 0 to below 360, with HSV's saturation and value, each 0 to 1. */
constexpr Colour colourOfHSV(double hue, double saturation, double value) noexcept
{
    const auto component = [&](double shift) {
        double k = shift + hue / 60.0;
        k = k >= 6.0 ? k - 6.0 : k;
        return value - value * saturation * std::clamp(std::min(k, 4.0 - k), 0.0, 1.0);
    };
    return {component(5.0), component(3.0), component(1.0)};
}

} // namespace oribund
