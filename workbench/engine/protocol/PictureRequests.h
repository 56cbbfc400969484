#pragma once

#include "workbench/model/projection/Projection.h"

#include <string>
#include <variant>

namespace workbench
{

namespace request
{

/** Answered by event::ThumbnailMade. An edit that was asked of just before is still prepared. */
struct MakeThumbnail {
    Projection projection;
    int frame = 0;
    int maxWidth = 0;
    int maxHeight = 0;

    bool operator==(const MakeThumbnail&) const = default;
};

/** Answered by event::WaveformMade. */
struct MakeWaveform {
    std::string path;
    int stream = 0;      ///< among those of the file that hold sound
    double from = 0.0;   ///< seconds
    double length = 0.0; ///< seconds
    int parts = 0;       ///< the stretch is told in so many parts of equal length

    bool operator==(const MakeWaveform&) const = default;
};

} // namespace request

/** What PictureService has made. */
using PictureRequest = std::variant<request::MakeThumbnail, request::MakeWaveform>;

} // namespace workbench
