#include "workbench/app/session/ClipPlacement.h"

#include <algorithm>

namespace workbench
{

namespace
{

const Track* firstTrack(const EditModel& edit, TrackKind kind)
{
    for (const auto& track : edit.timeline().tracks())
        if (track->data.kind == kind)
            return track.get();
    return nullptr;
}

int endOf(const Track* track)
{
    return track && !track->segments.empty() ? track->segments.back()->data.end() : 0;
}

template <class Visit>
void forEachCut(const EditModel& edit, Visit&& visit)
{
    for (const auto& track : edit.timeline().tracks())
        for (const Segment* segment : track->segments) {
            visit(segment->data.start);
            visit(segment->data.end());
        }
}

} // namespace

FormatData formatFor(const MediaInfo& media)
{
    FormatData format;
    // A photograph has neither the shape nor the pace of a film.
    if (!media.hasVideo || media.isStill())
        return format;
    // Encoders want even sizes.
    format.width = std::clamp(media.width, 16, 7680) & ~1;
    format.height = std::clamp(media.height, 16, 4320) & ~1;
    format.colourspace = format.height < 720 ? 601 : 709;
    const double rate = static_cast<double>(media.fpsNumerator) / std::max(media.fpsDenominator, 1);
    if (rate >= 1.0 && rate <= 120.0) {
        format.fpsNumerator = media.fpsNumerator;
        format.fpsDenominator = media.fpsDenominator;
    }
    return format;
}

EditOutcome appendMedia(EditModel& edit, const MediaInfo& media)
{
    const Track* const video = media.hasVideo ? firstTrack(edit, TrackKind::Video) : nullptr;
    const Track* const audio = media.hasAudio ? firstTrack(edit, TrackKind::Audio) : nullptr;
    Editor::Clip clip;
    clip.media = media;
    clip.videoTrack = video ? video->id() : kNoObject;
    clip.audioTrack = audio ? audio->id() : kNoObject;
    if (media.isStill())
        clip.length = static_cast<int>(kStillSeconds / edit.format().frameLength());
    return Editor(edit).addClip(clip, std::max(endOf(video), endOf(audio)));
}

const Segment* topSegmentAt(const EditModel& edit, int frame)
{
    for (const auto& track : edit.timeline().tracks()) {
        if (track->data.kind != TrackKind::Video)
            continue;
        if (const Segment* segment = edit.timeline().segmentAt(track->id(), frame))
            return segment;
    }
    return nullptr;
}

int previousCut(const EditModel& edit, int frame)
{
    int found = 0;
    forEachCut(edit, [&](int cut) {
        if (cut < frame)
            found = std::max(found, cut);
    });
    return found;
}

int nextCut(const EditModel& edit, int frame)
{
    int found = edit.timeline().endFrame();
    forEachCut(edit, [&](int cut) {
        if (cut > frame)
            found = std::min(found, cut);
    });
    return found;
}

} // namespace workbench
