#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/IdStamp.h"

#include <map>
#include <span>
#include <utility>
#include <vector>

namespace oribund
{

/**
 * Which keyframes are selected: those of a parameter of an effect at these effect times. A plain value that knows
 * nothing of what keyframes there are: its owner keeps it in step with them.
 *
 * IdStamp::wildcard() as the effect stands for all effects; an invalid stamp as the parameter for all of its
 * parameters.
 */
class ORIBUND_API KeyframeSelection
{
public:
    using Key = std::pair<IdStamp, IdStamp>; ///< effect, parameter

    bool contains(const IdStamp& effect, const IdStamp& param, double fxTime) const;

    /** True when that was a change. */
    bool set(const IdStamp& effect, const IdStamp& param, double fxTime, bool selected);

    /** Replaces what is selected of one parameter; `times` ascend. */
    void assign(const IdStamp& effect, const IdStamp& param, std::vector<double> times);

    /** True when something was selected. */
    bool clear(const IdStamp& effect, const IdStamp& param);

    int count(const IdStamp& effect, const IdStamp& param) const;

    /** Of one parameter, ascending. Valid until the selection changes. */
    std::span<const double> times(const IdStamp& effect, const IdStamp& param) const;

    /** By effect and parameter; no list is empty. */
    const std::map<Key, std::vector<double>>& all() const { return times_; }

    /** Whether the effect and parameter, which may stand for all, mean that entry. */
    static bool matches(const Key& key, const IdStamp& effect, const IdStamp& param) noexcept;

    bool operator==(const KeyframeSelection&) const = default;

private:
    std::map<Key, std::vector<double>> times_;
};

} // namespace oribund
