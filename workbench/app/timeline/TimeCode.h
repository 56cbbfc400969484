#pragma once

#include "workbench/model/EditData.h"

#include <optional>
#include <string>
#include <string_view>

namespace workbench
{

/** "hh:mm:ss:ff" for a frame of the edit; frames are counted through, none is dropped. */
std::string timeCodeOf(int frame, const FormatData& format);

/** The frame of a time code; parts may be left out from the left ("2:10" is 2 s and 10 frames). Empty for no code. */
std::optional<int> frameOfTimeCode(std::string_view text, const FormatData& format);

/** Whole frames in a second of time code. */
int framesPerSecond(const FormatData& format);

} // namespace workbench
