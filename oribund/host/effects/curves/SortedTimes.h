#pragma once

#include <algorithm>
#include <optional>
#include <vector>

namespace oribund
{

/** Sorts times of any kind and keeps one of those that lie within `tolerance` of each other. */
inline void sortDistinct(std::vector<double>& times, double tolerance)
{
    // Those of a single parameter are in order already.
    if (!std::is_sorted(times.begin(), times.end()))
        std::sort(times.begin(), times.end());
    std::size_t kept = 0;
    for (const double time : times) {
        if (kept == 0 || time - times[kept - 1] > tolerance)
            times[kept++] = time;
    }
    times.resize(kept);
}

/** Of ascending times the first one that is later than `time` by more than `tolerance`. */
inline std::optional<double> firstLater(const std::vector<double>& times, double time, double tolerance)
{
    const auto later = std::upper_bound(times.begin(), times.end(), time + tolerance);
    return later == times.end() ? std::nullopt : std::optional(*later);
}

/** The last one that is earlier by more than `tolerance`. */
inline std::optional<double> lastEarlier(const std::vector<double>& times, double time, double tolerance)
{
    const auto notEarlier = std::lower_bound(times.begin(), times.end(), time - tolerance);
    return notEarlier == times.begin() ? std::nullopt : std::optional(*std::prev(notEarlier));
}

} // namespace oribund
