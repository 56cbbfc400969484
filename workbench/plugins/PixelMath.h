#pragma once

#include "workbench/plugins/PixelLoop.h"

#include <algorithm>
#include <bit>
#include <cstdint>

/**
 * What the loops over pixels are made of: no branches and no calls, so that a compiler works on several pixels at once.
 * Components are from 0 to 255. Single precision: what comes of it differs from exact numbers by far less than a step
 * of a byte.
 */
namespace workbench
{

inline constexpr float kFull = 255.0F;

struct RGB {
    float r;
    float g;
    float b;
};

/** Where the components of a pixel begin, in bits. */
inline constexpr bool kIsLittle = std::endian::native == std::endian::little;
inline constexpr int kRed = kIsLittle ? 0 : 24;
inline constexpr int kGreen = kIsLittle ? 8 : 16;
inline constexpr int kBlue = kIsLittle ? 16 : 8;
inline constexpr std::uint32_t kAlphaMask = 0xffU << (kIsLittle ? 24 : 0);

IN_LOOP float componentOf(std::uint32_t pixel, int shift)
{
    return static_cast<float>(static_cast<std::int32_t>(pixel >> shift & 0xffU));
}

IN_LOOP RGB colourOf(std::uint32_t pixel)
{
    return {componentOf(pixel, kRed), componentOf(pixel, kGreen), componentOf(pixel, kBlue)};
}

/** A component may be out of its range by a rounding error. */
IN_LOOP std::uint32_t bitsOf(float component, int shift)
{
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(component + 0.5F)) << shift;
}

IN_LOOP std::uint32_t pixelOf(const RGB& colour, std::uint32_t alphaFrom)
{
    return bitsOf(colour.r, kRed) | bitsOf(colour.g, kGreen) | bitsOf(colour.b, kBlue) | (alphaFrom & kAlphaMask);
}

/** As bright as the eye takes an encoded colour to be. */
IN_LOOP float lumaOf(const RGB& colour)
{
    return 0.2126F * colour.r + 0.7152F * colour.g + 0.0722F * colour.b;
}

IN_LOOP float clampTo(float value, float most)
{
    return std::min(std::max(value, 0.0F), most);
}

} // namespace workbench
