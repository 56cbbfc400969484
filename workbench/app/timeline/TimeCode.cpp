#include "workbench/app/timeline/TimeCode.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <limits>

namespace workbench
{

int framesPerSecond(const FormatData& format)
{
    return std::max(1, (format.fpsNumerator + format.fpsDenominator / 2) / format.fpsDenominator);
}

std::string timeCodeOf(int frame, const FormatData& format)
{
    const int rate = framesPerSecond(format);
    const int count = std::max(frame, 0);
    const int seconds = count / rate;
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%02d:%02d:%02d:%02d", seconds / 3600, seconds / 60 % 60, seconds % 60,
                  count % rate);
    return text.data();
}

std::optional<int> frameOfTimeCode(std::string_view text, const FormatData& format)
{
    // Worth of the fields from the right, in frames.
    const std::int64_t rate = framesPerSecond(format);
    const std::array<std::int64_t, 4> worth{1, rate, 60 * rate, 3600 * rate};
    std::int64_t frames = 0;
    for (const std::int64_t unit : worth) {
        const std::size_t colon = text.find_last_of(":;.");
        const std::string_view field = colon == std::string_view::npos ? text : text.substr(colon + 1);
        int value = 0;
        const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), value);
        if (error != std::errc() || end != field.data() + field.size() || value < 0)
            return std::nullopt;
        frames += value * unit;
        if (frames > std::numeric_limits<int>::max())
            return std::nullopt;
        if (colon == std::string_view::npos)
            return static_cast<int>(frames);
        text = text.substr(0, colon);
    }
    return std::nullopt;
}

} // namespace workbench
