#include "workbench/app/overlay/ColourCount.h"

#include "oribund/host/base/HueSatLum.h"

#include <algorithm>

namespace workbench
{

using oribund::iFrameStatistics;

namespace
{
/** The part of an axis into which a number from 0 to 1 falls; 1 falls into the last one. */
std::size_t binOf(double part)
{
    constexpr double kBins = iFrameStatistics::kBins;
    return static_cast<std::size_t>(std::clamp(part * kBins, 0.0, kBins - 1.0));
}
} // namespace

oribund::Colour colourAt(const FrameImage& picture, int x, int y)
{
    const std::uint8_t* const pixel = picture.pixel(x, y);
    return {pixel[0] / 255.0, pixel[1] / 255.0, pixel[2] / 255.0, pixel[3] / 255.0};
}

ColourCount countColours(const FrameImage& picture)
{
    ColourCount count{};
    auto& [hue, saturation, luminance] = count;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const oribund::Colour colour = colourAt(picture, x, y);
            const auto axes = oribund::HueSatLum::of(colour);
            const auto weight = static_cast<float>(colour.a);
            if (axes.saturation > 0.0)
                hue[binOf(axes.hue / 360.0)] += weight;
            saturation[binOf(axes.saturation)] += weight;
            luminance[binOf(axes.luminance)] += weight;
        }
    }
    return count;
}

} // namespace workbench
