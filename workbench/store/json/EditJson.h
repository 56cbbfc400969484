#pragma once

#include "workbench/model/EditData.h"
#include "workbench/store/json/JsonText.h"

#include <optional>

namespace workbench
{

class MediaPaths;
class Warnings;

// The parts of an edit as they are saved, each beside the service that plays it, and what is read back. Numbers out of
// range are mended, with a warning; whether the parts go together is not looked at here.

/** Name, format, media and cues. */
Json editJson(const EditData& edit, const MediaPaths& paths);
EditData editFrom(const Json& json, const MediaPaths& paths, Warnings& warnings);

/** A track without its segments, but with its transitions. */
Json trackJson(const TrackData& track);
TrackData trackFrom(const Json& json, Warnings& warnings);

/** A segment without its effects. */
Json segmentJson(const SegmentData& segment, ObjectId track);

struct PlacedSegment {
    SegmentData segment;
    ObjectId track = kNoObject;
};

PlacedSegment segmentFrom(const Json& json, Warnings& warnings);

} // namespace workbench
