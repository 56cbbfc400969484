#include "workbench/model/KeyframeTimes.h"

#include "oribund/host/base/Numeric.h"
#include "oribund/host/effects/curves/BezierCurve.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace workbench
{

KeyframeTimes::KeyframeTimes(int oldLength, int newLength, int shift)
    : oldLength_(oldLength)
    , newLength_(newLength)
    , shift_(shift)
{
}

ParamData KeyframeTimes::moved(ParamData param) const
{
    const double stretch = static_cast<double>(oldLength_) / newLength_;
    // In a longer segment two of them may come closer than a curve can hold.
    constexpr double kApart = 2.0 * oribund::kValueTolerance;
    for (ChannelData& channel : param.channels) {
        double earliest = -oribund::Graph1dBase::kMaxTime;
        for (oribund::Keyframe& key : channel) {
            key.time = std::max(toTime(toFrame(key.time, oldLength_) + shift_, newLength_), earliest);
            key.in.dt *= stretch;
            key.out.dt *= stretch;
            earliest = key.time + kApart;
        }
    }
    return param;
}

ParamData KeyframeTimes::divided(const ParamData& param, double fxTime)
{
    ParamData result = param;
    for (ChannelData& channel : result.channels) {
        oribund::BezierCurve curve;
        const bool held = curve.setKeyframes(std::span(&channel, 1));
        const int left = curve.lowerIndex(fxTime);
        if (!held || left < 0 || left + 1 == curve.size() || curve.subdivide(fxTime) < 0)
            return param;
        channel = curve.keyframes();
    }
    return result;
}

double KeyframeTimes::toFrame(double fxTime, int length)
{
    constexpr double kNearlyWhole = 1e-6;
    const double frame = fxTime * length;
    const double whole = std::round(frame);
    return std::abs(frame - whole) <= kNearlyWhole ? whole : frame;
}

} // namespace workbench
