#include "bench/graphs/ArrayPeer.h"

#include "oribund/host/effects/curves/CubicSegment.h"

#include <algorithm>
#include <cmath>

namespace bench
{

namespace
{

std::size_t countUpTo(const std::vector<double>& times, double time) noexcept
{
    return static_cast<std::size_t>(std::upper_bound(times.begin(), times.end(), time) - times.begin());
}

} // namespace

double ArrayPeer::evaluate(double time) const noexcept
{
    const std::size_t after = countUpTo(times_, time);
    if (times_.empty())
        return 0.0;
    if (after == 0 || after == times_.size())
        return payload_[after == 0 ? 0 : after - 1].value;
    const Payload& left = payload_[after - 1];
    const Payload& right = payload_[after];
    const double length = times_[after] - times_[after - 1];
    const double rise = right.value - left.value;
    const double u = (time - times_[after - 1]) / length;
    if (!left.smooth)
        return left.value + rise * u;
    if (!left.automatic || !right.automatic) {
        const double v = oribund::solveUnitCubic(left.outDt / length, (length + right.inDt) / length, u);
        const double w = 1.0 - v;
        return left.value + v * (3.0 * w * (w * left.outDv + v * (rise + right.inDv)) + v * v * rise);
    }
    const double m0 = left.outDv * length;
    const double m1 = right.inDv * length;
    return left.value + u * (m0 + u * (3.0 * rise - 2.0 * m0 - m1 + u * (m0 + m1 - 2.0 * rise)));
}

int ArrayPeer::indexAt(double time) const noexcept
{
    const auto found = std::lower_bound(times_.begin(), times_.end(), time - 1e-9);
    return found != times_.end() && *found <= time + 1e-9 ? static_cast<int>(found - times_.begin()) : -1;
}

void ArrayPeer::setValue(int index, double value) noexcept
{
    payload_[static_cast<std::size_t>(index)].value = value;
    refreshAround(index);
}

int ArrayPeer::add(double time)
{
    const auto at = static_cast<std::ptrdiff_t>(countUpTo(times_, time));
    Payload payload;
    payload.value = evaluate(time);
    payload.smooth =
        !payload_.empty() && payload_[static_cast<std::size_t>(std::max<std::ptrdiff_t>(at - 1, 0))].smooth;
    times_.insert(times_.begin() + at, time);
    payload_.insert(payload_.begin() + at, payload);
    refreshAround(static_cast<int>(at));
    return static_cast<int>(at);
}

void ArrayPeer::remove(int index)
{
    times_.erase(times_.begin() + index);
    payload_.erase(payload_.begin() + index);
    refreshAround(index - 1);
}

void ArrayPeer::assign(std::span<const oribund::Keyframe> keyframes)
{
    times_.clear();
    payload_.clear();
    for (const oribund::Keyframe& keyframe : keyframes) {
        times_.push_back(keyframe.time);
        payload_.push_back({keyframe.value, keyframe.in.dt, keyframe.in.dv, keyframe.out.dt, keyframe.out.dv,
                            keyframe.type == oribund::KeyframeType::Smooth, keyframe.in.automatic});
    }
    for (int i = 0; i < size(); ++i)
        refresh(i);
}

void ArrayPeer::refreshAround(int index) noexcept
{
    for (int i = index - 1; i <= index + 1; ++i)
        refresh(i);
}

void ArrayPeer::refresh(int index) noexcept
{
    if (index < 0 || index >= size())
        return;
    const auto i = static_cast<std::size_t>(index);
    if (!payload_[i].automatic || (!payload_[i].smooth && (i == 0 || !payload_[i - 1].smooth)))
        return;
    double slope = 0.0;
    if (i > 0 && i + 1 < times_.size()) {
        const double h0 = times_[i] - times_[i - 1];
        const double h1 = times_[i + 1] - times_[i];
        const double rise0 = payload_[i].value - payload_[i - 1].value;
        const double rise1 = payload_[i + 1].value - payload_[i].value;
        const double w0 = h0 + 2.0 * h1;
        const double w1 = 2.0 * h0 + h1;
        if (const double product = rise0 * rise1; product > 0.0)
            slope = (w0 + w1) * product / (w0 * h0 * rise1 + w1 * h1 * rise0);
    }
    payload_[i].inDv = payload_[i].outDv = slope;
}

} // namespace bench
