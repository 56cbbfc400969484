#pragma once

#include <algorithm>
#include <cstdint>

namespace oribund
{

/** A display colour: red, green, blue and opacity from 0 to 1, in the display's own encoding, not premultiplied. */
struct Colour {
    double r = 0.0;
    double g = 0.0;
    double b = 0.0;
    double a = 1.0;

    /** From 0xRRGGBB. */
    static constexpr Colour fromRGB(std::uint32_t rgb, double alpha = 1.0) noexcept
    {
        return {((rgb >> 16) & 0xff) / 255.0, ((rgb >> 8) & 0xff) / 255.0, (rgb & 0xff) / 255.0, alpha};
    }

    /** To 0xRRGGBB, each component clamped and rounded; opacity is left out. */
    constexpr std::uint32_t toRGB() const noexcept { return byteOf(r) << 16 | byteOf(g) << 8 | byteOf(b); }

    /** This colour at `f` 0, `other` at `f` 1, in between for `f` in between; opacity included. */
    constexpr Colour mix(const Colour& other, double f) const noexcept
    {
        return {r + (other.r - r) * f, g + (other.g - g) * f, b + (other.b - b) * f, a + (other.a - a) * f};
    }

    /** Darker for `f` below 1, lighter above, clamped at white; opacity stays. */
    constexpr Colour scaled(double f) const noexcept { return {unit(r * f), unit(g * f), unit(b * f), a}; }

    constexpr Colour withAlpha(double alpha) const noexcept { return {r, g, b, alpha}; }

    /** Perceived brightness from 0 to 1, good enough to choose between dark and light text. */
    constexpr double luma() const noexcept { return 0.2126 * r + 0.7152 * g + 0.0722 * b; }

    constexpr bool operator==(const Colour&) const noexcept = default;

private:
    static constexpr double unit(double v) noexcept { return std::clamp(v, 0.0, 1.0); }

    static constexpr std::uint32_t byteOf(double v) noexcept
    {
        return static_cast<std::uint32_t>(unit(v) * 255.0 + 0.5);
    }
};

} // namespace oribund
