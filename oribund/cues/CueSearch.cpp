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

/** Whole frames in a second of timecode. */
long long framesPerSecond(const Edit& edit)
{
    return std::max(1, roundHalfAway(1.0 / edit.getCelResolution()));
}

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

WString getCueTimecode(double time, const EditPtr& edit)
{
    // Beyond this a frame number has no exact double; nobody edits for a million years.
    constexpr double kLatest = 1e15;
    // Times are sums and products of frame lengths: what is a hair before a frame is that frame.
    constexpr double kHair = 1e-6;
    if (!edit || !std::isfinite(time))
        return {};
    const double resolution = edit->getCelResolution();
    const long long rate = framesPerSecond(*edit);
    const auto frames = static_cast<long long>(std::floor(std::min(std::abs(time) / resolution + kHair, kLatest)));
    const long long seconds = frames / rate;
    std::wstring text = time < 0.0 && frames > 0 ? L"-" : L"";
    text += twoDigits(seconds / 3600) + L":" + twoDigits(seconds / 60 % 60) + L":";
    text += twoDigits(seconds % 60) + L":" + twoDigits(frames % rate);
    return WString(text);
}

std::optional<double> parseCueTimecode(const WString& text, const EditPtr& edit)
{
    if (!edit)
        return std::nullopt;
    const long long rate = framesPerSecond(*edit);
    double frames = 0.0;
    std::wstring_view rest = text.view();
    for (const long long worth : {1LL, rate, 60 * rate, 3600 * rate}) {
        const std::size_t colon = rest.find_last_of(L":;.");
        const std::wstring_view field = colon == std::wstring_view::npos ? rest : rest.substr(colon + 1);
        const std::optional<int> number = parseInt(field);
        if (!number || *number < 0 || field.find_first_of(L"+-") != std::wstring_view::npos)
            return std::nullopt;
        frames += static_cast<double>(worth * *number);
        if (colon == std::wstring_view::npos)
            return frames * edit->getCelResolution();
        rest = rest.substr(0, colon);
    }
    return std::nullopt;
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
