#pragma once

#include <string>

namespace workbench
{

/** What is known of a media file; a plain value, filled by the engine's probe. Frames are counted in the file's own
 * rate. */
struct MediaInfo {
    std::string path; ///< UTF-8, absolute
    int frames = 0;   ///< 0 for a still picture, which has no length of its own
    int fpsNumerator = 25;
    int fpsDenominator = 1;
    int width = 0; ///< as it is shown: upright, in square pixels; 0 without a picture
    int height = 0;
    bool hasVideo = false;
    bool hasAudio = false;
    int audioRate = 0; ///< samples a second; 0 without sound
    int audioChannels = 0;

    bool isStill() const { return hasVideo && frames == 0; }

    bool operator==(const MediaInfo&) const = default;
};

} // namespace workbench
