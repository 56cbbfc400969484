#include "oribund/colour/RangeHistogram.h"

#include <algorithm>
#include <cmath>

namespace oribund::RangeHistogram
{

namespace
{

std::uint32_t opaque(const Colour& colour)
{
    return 0xff000000U | colour.toRGB();
}

/** How much of the pixel from `row` on lies between two heights from the top. */
double coverage(int row, double top, double bottom)
{
    return std::clamp(std::min(row + 1.0, bottom) - std::max(static_cast<double>(row), top), 0.0, 1.0);
}

} // namespace

std::vector<double> heights(const iFrameStatistics::Histogram& histogram, const NumRange<double>& part,
                            std::size_t columns)
{
    constexpr double kTallest = 0.94;
    constexpr auto kBins = static_cast<int>(iFrameStatistics::kBins);
    const float most = *std::max_element(histogram.begin(), histogram.end());
    if (!(most > 0.0F) || !(part.length() > 0.0))
        return {};
    std::array<double, iFrameStatistics::kBins> tall{};
    std::transform(histogram.begin(), histogram.end(), tall.begin(), [most](float count) {
        return kTallest * std::sqrt(std::clamp(static_cast<double>(count / most), 0.0, 1.0));
    });
    const bool isWhole = part.start() >= 0.0 && part.end() <= 1.0;
    const auto heightOf = [&](int bin) {
        bin = isWhole ? std::clamp(bin, 0, kBins - 1) : (bin % kBins + kBins) % kBins;
        return tall[static_cast<std::size_t>(bin)];
    };
    std::vector<double> result(columns);
    const double perColumn = part.length() * kBins / static_cast<double>(columns);
    // From the middle of a bin to that of the next.
    double place = part.start() * kBins + perColumn / 2.0 - 0.5;
    for (double& height : result) {
        const double bin = std::floor(place);
        const double share = place - bin;
        const int index = static_cast<int>(bin);
        height = heightOf(index) * (1.0 - share) + heightOf(index + 1) * share;
        place += perColumn;
    }
    return result;
}

Image picture(std::span<const Colour> columns, std::span<const double> heights, int height)
{
    constexpr double kShade = 0.5;
    constexpr double kLight = 0.55;
    const Colour white{1.0, 1.0, 1.0};
    // The line is as thick as the strip is high, on any screen.
    const double line = height / 20.0;
    const std::size_t width = columns.size();
    Image::Pixels pixels(width * static_cast<std::size_t>(std::max(height, 0)));
    for (std::size_t x = 0; x < width; ++x) {
        const double edge = x < heights.size() ? height * (1.0 - heights[x]) : height;
        const Colour dark = columns[x].scaled(kShade);
        const Colour light = columns[x].mix(white, kLight);
        const int first = std::clamp(static_cast<int>(std::floor(edge - line)), 0, height);
        const int last = std::clamp(static_cast<int>(std::ceil(edge)), first, height);
        std::uint32_t* pixel = pixels.data() + x;
        int row = 0;
        for (const std::uint32_t bright = opaque(columns[x]); row < first; ++row, pixel += width)
            *pixel = bright;
        for (; row < last; ++row, pixel += width)
            *pixel =
                opaque(columns[x].mix(light, coverage(row, edge - line, edge)).mix(dark, coverage(row, edge, height)));
        for (const std::uint32_t shaded = opaque(dark); row < height; ++row, pixel += width)
            *pixel = shaded;
    }
    return Image::fromPixels({static_cast<int>(width), height}, std::move(pixels));
}

} // namespace oribund::RangeHistogram
