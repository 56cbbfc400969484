#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/LightweightString.h"

#include <optional>
#include <string_view>

namespace oribund
{

// Time code counts hours, minutes, seconds and frames: "01:02:03:04". Frames are counted through, none is dropped.

/** Whole frames in a second of time code, for frames of that length in seconds; at least 1. */
ORIBUND_API int framesPerSecond(double frameLength);

/** The time code of a frame, with `rate` frames in a second. Before the start it has a minus. */
ORIBUND_API WString timeCodeText(long long frame, int rate);

/**
 * The frame of a time code. Fields may be left out from the left, and be larger than usual: "90:5" is a minute and a
 * half and five frames. Nothing for any other text, and for what is beyond a million years.
 */
ORIBUND_API std::optional<long long> parseTimeCode(std::wstring_view text, int rate);

} // namespace oribund
