#pragma once

#include "workbench/model/Editor.h"

namespace workbench
{

/** How long a still picture is shown at first, in seconds. */
inline constexpr int kStillSeconds = 5;

/** The format of an edit that begins with that media. */
FormatData formatFor(const MediaInfo& media);

/**
 * Puts media behind what is on the first video track, its sound with it on the first audio track. Yields the segment,
 * or why it cannot be done.
 */
EditOutcome appendMedia(EditModel& edit, const MediaInfo& media);

/** The first video segment at that frame, top track first; null for none. */
const Segment* topSegmentAt(const EditModel& edit, int frame);

/** The cut before or after a frame, over all tracks; the edit's start or end where there is none. */
int previousCut(const EditModel& edit, int frame);
int nextCut(const EditModel& edit, int frame);

} // namespace workbench
