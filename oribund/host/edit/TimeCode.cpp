#include "oribund/host/edit/TimeCode.h"

#include "oribund/host/base/Numeric.h"

#include <algorithm>
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

int framesPerSecond(double frameLength)
{
    return std::max(1, roundHalfAway(1.0 / frameLength));
}

WString timeCodeText(long long frame, int rate)
{
    const long long frames = std::llabs(frame);
    const long long seconds = frames / rate;
    std::wstring text = frame < 0 ? L"-" : L"";
    text += twoDigits(seconds / 3600) + L":" + twoDigits(seconds / 60 % 60) + L":";
    text += twoDigits(seconds % 60) + L":" + twoDigits(frames % rate);
    return WString(text);
}

std::optional<long long> parseTimeCode(std::wstring_view text, int rate)
{
    constexpr double kLatest = 1e15;
    double frames = 0.0;
    for (const double worth : {1.0, 1.0 * rate, 60.0 * rate, 3600.0 * rate}) {
        const std::size_t colon = text.find_last_of(L":;.");
        const std::wstring_view field = colon == std::wstring_view::npos ? text : text.substr(colon + 1);
        const std::optional<int> number = parseInt(field);
        if (!number || field.find_first_not_of(L"0123456789") != std::wstring_view::npos)
            return std::nullopt;
        frames += worth * *number;
        if (colon == std::wstring_view::npos)
            return frames <= kLatest ? std::optional(static_cast<long long>(frames)) : std::nullopt;
        text = text.substr(0, colon);
    }
    return std::nullopt;
}

} // namespace oribund
