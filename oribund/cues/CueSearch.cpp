#include "oribund/cues/CueSearch.h"

#include "oribund/host/base/Numeric.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>

namespace oribund
{

namespace
{

std::wstring twoDigits(long long number)
{
    const std::wstring digits = std::to_wstring(number);
    return digits.size() < 2 ? L"0" + digits : digits;
}

} // namespace

Cue findCueNearestPos(const EditPtr& edit, int pos, int width, int maxDistance, const NumRange<double>& visible)
{
    Cue nearest;
    nearest.time = kNoCueTime;
    if (!edit || width <= 0 || !(visible.length() > 0.0))
        return nearest;
    long long reach = static_cast<long long>(maxDistance) + 1;
    for (const Cue& cue : edit->getCues()) {
        if ((cue.flags & Cue::kVisible) == 0)
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

WString getCueTimecode(double time, const EditPtr& edit)
{
    // Beyond this a frame number has no exact double; nobody edits for a million years.
    constexpr double kLatest = 1e15;
    // Times are sums and products of frame lengths: what is a hair before a frame is that frame.
    constexpr double kHair = 1e-6;
    if (!edit || !std::isfinite(time))
        return {};
    const double resolution = edit->getCelResolution();
    const long long rate = std::max(1, roundHalfAway(1.0 / resolution));
    const auto frames = static_cast<long long>(std::floor(std::min(std::abs(time) / resolution + kHair, kLatest)));
    const long long seconds = frames / rate;
    std::wstring text = time < 0.0 && frames > 0 ? L"-" : L"";
    text += twoDigits(seconds / 3600) + L":" + twoDigits(seconds / 60 % 60) + L":";
    text += twoDigits(seconds % 60) + L":" + twoDigits(frames % rate);
    return WString(text);
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
