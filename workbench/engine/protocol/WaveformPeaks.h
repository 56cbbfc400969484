#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace workbench
{

/** How sound swings in each of the equal parts of a stretch: its lowest and its highest sample, channel by channel. */
struct WaveformPeaks {
    int channels = 0;
    std::vector<std::int16_t> samples; ///< for each part, for each channel: lowest, highest

    std::size_t parts() const { return channels > 0 ? samples.size() / (2 * static_cast<std::size_t>(channels)) : 0; }

    std::int16_t lowest(std::size_t part, int channel) const { return samples[indexOf(part, channel)]; }

    std::int16_t highest(std::size_t part, int channel) const { return samples[indexOf(part, channel) + 1]; }

    bool operator==(const WaveformPeaks&) const = default;

private:
    std::size_t indexOf(std::size_t part, int channel) const
    {
        return 2 * (part * static_cast<std::size_t>(channels) + static_cast<std::size_t>(channel));
    }
};

} // namespace workbench
