#include "workbench/model/projection/MediaProjection.h"

#include "workbench/model/EditData.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace workbench
{

namespace
{

// Pictures of a file are small: more than its shape needs not be known.
constexpr int kLargestShape = 4096;

int lengthInFrames(const MediaInfo& media, const ProjectedProfile& profile)
{
    const double seconds = static_cast<double>(media.frames) * media.fpsDenominator / media.fpsNumerator;
    const double frames = seconds * profile.fpsNumerator / profile.fpsDenominator;
    return static_cast<int>(std::clamp(std::ceil(frames), 1.0, static_cast<double>(kMostFrames)));
}

} // namespace

Projection projectMedia(const MediaInfo& media, int fpsNumerator, int fpsDenominator)
{
    Projection edit;
    const double scale = std::min(1.0, static_cast<double>(kLargestShape) / std::max({media.width, media.height, 1}));
    edit.profile.width = std::max(2, static_cast<int>(std::lround(media.width * scale)));
    edit.profile.height = std::max(2, static_cast<int>(std::lround(media.height * scale)));
    edit.profile.fpsNumerator = fpsNumerator;
    edit.profile.fpsDenominator = fpsDenominator;
    edit.length = lengthInFrames(media, edit.profile);
    ProjectedClip clip{"clip", {}, media.path, 0, edit.length - 1, {}, {}};
    if (media.isStill())
        clip.properties.push_back({"length", std::to_string(edit.length)});
    else
        clip.properties.push_back({"audio_index", "-1"});
    edit.clips.push_back(std::move(clip));
    ProjectedEntry entry;
    entry.kind = ProjectedEntry::Kind::Clip;
    entry.length = edit.length;
    entry.first = {"clip", 0, edit.length - 1};
    edit.tracks.push_back({"track", {}, ProjectedTrack::Hide::Nothing, {entry}});
    return edit;
}

} // namespace workbench
