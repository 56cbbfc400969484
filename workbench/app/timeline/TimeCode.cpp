#include "workbench/app/timeline/TimeCode.h"

#include "oribund/host/edit/TimeCode.h"

#include <algorithm>
#include <limits>

namespace workbench
{

int framesPerSecond(const FormatData& format)
{
    return oribund::framesPerSecond(format.frameLength());
}

std::string timeCodeOf(int frame, const FormatData& format)
{
    return std::string(toUTF8(oribund::timeCodeText(std::max(frame, 0), framesPerSecond(format))).view());
}

std::optional<int> frameOfTimeCode(std::string_view text, const FormatData& format)
{
    const auto frame = oribund::parseTimeCode(oribund::toWide(text).view(), framesPerSecond(format));
    return frame && *frame <= std::numeric_limits<int>::max() ? std::optional(static_cast<int>(*frame)) : std::nullopt;
}

} // namespace workbench
