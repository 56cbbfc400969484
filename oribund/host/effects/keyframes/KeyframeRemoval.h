#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/Kt.h"
#include "oribund/host/effects/EffectInstance.h"

#include <span>
#include <vector>

namespace oribund
{

/** Keyframes of any number of parameters that are to go together. Those that cannot be edited are left out. */
class ORIBUND_API KeyframeRemoval
{
public:
    KeyframeRemoval();
    ~KeyframeRemoval();

    /**
     * The keyframes of a parameter at these effect times; there may be none. Where they are all that it has, it becomes
     * a constant of the value at effect time `now`.
     */
    void add(const EffectInstance& effect, const IdStamp& param, std::span<const double> times, double now);

    int count() const { return count_; }

    void apply() const;

private:
    struct Part {
        Kt::Ptr<EffectValParamBase> param;
        std::vector<double> times;
        double now;
    };

    std::vector<Part> parts_;
    int count_ = 0;
};

} // namespace oribund
