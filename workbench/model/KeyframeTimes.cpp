#include "workbench/model/KeyframeTimes.h"

#include <cmath>

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
    for (ChannelData& channel : param.channels) {
        for (oribund::Keyframe& key : channel) {
            key.time = toTime(toFrame(key.time, oldLength_) + shift_, newLength_);
            key.in.dt *= stretch;
            key.out.dt *= stretch;
        }
    }
    return param;
}

double KeyframeTimes::toFrame(double time, int length)
{
    constexpr double kNearlyWhole = 1e-6;
    const double frame = time * length;
    const double whole = std::round(frame);
    return std::abs(frame - whole) <= kNearlyWhole ? whole : frame;
}

} // namespace workbench
