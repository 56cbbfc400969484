#include "oribund/cues/CueSearch.h"

#include "oribund/host/base/Numeric.h"
#include "oribund/host/edit/TimeCode.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>

namespace oribund
{

Cue findCueNearestPos(const EditPtr& edit, int pos, int width, int maxDistance, const NumRange<double>& visible)
{
    Cue nearest;
    nearest.time = kNoCueTime;
    if (!edit || width <= 0 || !(visible.length() > 0.0))
        return nearest;
    long long reach = static_cast<long long>(maxDistance) + 1;
    for (const Cue& cue : edit->getCues()) {
        if ((cue.flags & Cue::kVisible) == 0 || !std::isfinite(cue.time))
            continue;
        const long long at = roundHalfAway(width * (cue.time - visible.start()) / visible.length());
        const long long distance = std::llabs(at - pos);
        if (distance < reach) {
            reach = distance;
            nearest = cue;
        }
    }
    return nearest;
}

WString getCueTimecode(double editTime, const EditPtr& edit)
{
    // Beyond this a frame number has no exact double; nobody edits for a million years.
    constexpr double kLatest = 1e15;
    // Times are sums and products of frame lengths: what is a hair before a frame is that frame.
    constexpr double kHair = 1e-6;
    if (!edit || !std::isfinite(editTime))
        return {};
    const double resolution = edit->getCelResolution();
    const auto frames = static_cast<long long>(std::floor(std::min(std::abs(editTime) / resolution + kHair, kLatest)));
    return timeCodeText(editTime < 0.0 ? -frames : frames, framesPerSecond(resolution));
}

std::optional<double> parseCueTimecode(const WString& text, const EditPtr& edit)
{
    const auto frame = edit ? parseTimeCode(text.view(), framesPerSecond(edit->getCelResolution())) : std::nullopt;
    return frame ? std::optional(static_cast<double>(*frame) * edit->getCelResolution()) : std::nullopt;
}

WString getCueTooltip(const Cue& cue, const EditPtr& edit)
{
    std::wstring text(getCueTimecode(cue.time, edit).view());
    const auto append = [&text](const WString& more, const wchar_t* separator) {
        if (!more.empty())
            text.append(text.empty() ? L"" : separator).append(more.view());
    };
    append(cue.name, L"  ");
    append(cue.description, L"\n");
    return WString(text);
}

} // namespace oribund
