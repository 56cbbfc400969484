#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/NumRange.h"
#include "oribund/host/edit/Cue.h"
#include "oribund/host/edit/Edit.h"

#include <optional>

namespace oribund
{

/** The time of the empty cue that stands for "none": later than any. */
inline constexpr double kNoCueTime = 1e99;

/**
 * The visible cue nearest to the pixel `pos` of a strip `width` pixels wide that shows the edit times `visible`.
 *
 * Only cues at most `maxDistance` pixels away count; of equally near ones the first in the edit's list is taken. With
 * none in reach, without an edit, and for a strip that shows nothing, an empty cue at kNoCueTime.
 */
ORIBUND_API Cue findCueNearestPos(const EditPtr& edit, int pos, int width, int maxDistance,
                                  const NumRange<double>& visible);

/** Hours, minutes, seconds and frames of an edit time, "01:02:03:04"; empty without an edit. */
ORIBUND_API WString getCueTimecode(double editTime, const EditPtr& edit);

/** The time that a text stands for which parseTimeCode() reads. Nothing for any other text, and without an edit. */
ORIBUND_API std::optional<double> parseCueTimecode(const WString& text, const EditPtr& edit);

/** The cue's timecode and name, and its description on a line of its own; what is empty is left out. */
ORIBUND_API WString getCueTooltip(const Cue& cue, const EditPtr& edit);

} // namespace oribund
