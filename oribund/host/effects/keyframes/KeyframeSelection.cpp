#include "oribund/host/effects/keyframes/KeyframeSelection.h"

#include "oribund/host/base/Numeric.h"

#include <algorithm>

namespace oribund
{

namespace
{

/** Where a time stands, or would have to, among ascending ones. */
std::vector<double>::const_iterator placeOf(const std::vector<double>& times, double fxTime)
{
    return std::lower_bound(times.begin(), times.end(), fxTime - kValueTolerance);
}

bool standsAt(const std::vector<double>& times, std::vector<double>::const_iterator place, double fxTime)
{
    return place != times.end() && *place <= fxTime + kValueTolerance;
}

} // namespace

bool KeyframeSelection::matches(const Key& key, const IdStamp& effect, const IdStamp& param) noexcept
{
    return (effect.isWildcard() || key.first == effect) &&
           (!param.valid() || param.isWildcard() || key.second == param);
}

bool KeyframeSelection::contains(const IdStamp& effect, const IdStamp& param, double fxTime) const
{
    const auto found = times_.find({effect, param});
    return found != times_.end() && standsAt(found->second, placeOf(found->second, fxTime), fxTime);
}

bool KeyframeSelection::set(const IdStamp& effect, const IdStamp& param, double fxTime, bool selected)
{
    if (contains(effect, param, fxTime) == selected)
        return false;
    std::vector<double>& times = times_[{effect, param}];
    const auto place = placeOf(times, fxTime);
    if (selected)
        times.insert(place, fxTime);
    else
        times.erase(place);
    if (times.empty())
        times_.erase({effect, param});
    return true;
}

void KeyframeSelection::assign(const IdStamp& effect, const IdStamp& param, std::vector<double> times)
{
    if (times.empty())
        times_.erase({effect, param});
    else
        times_[{effect, param}] = std::move(times);
}

bool KeyframeSelection::clear(const IdStamp& effect, const IdStamp& param)
{
    return std::erase_if(times_, [&](const auto& entry) { return matches(entry.first, effect, param); }) > 0;
}

int KeyframeSelection::count(const IdStamp& effect, const IdStamp& param) const
{
    std::size_t count = 0;
    for (const auto& [key, times] : times_) {
        if (matches(key, effect, param))
            count += times.size();
    }
    return static_cast<int>(count);
}

std::span<const double> KeyframeSelection::times(const IdStamp& effect, const IdStamp& param) const
{
    const auto found = times_.find({effect, param});
    return found == times_.end() ? std::span<const double>() : std::span<const double>(found->second);
}

} // namespace oribund
