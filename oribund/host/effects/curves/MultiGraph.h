#pragma once

#include "oribund/host/effects/curves/BezierCurve.h"

#include <array>
#include <cstddef>

namespace oribund
{

/**
 * The keyframe graph of a value made of `N` numbers, such as a colour: one curve each, whose keyframes have the same
 * times. Values, types and tangents belong to the channels.
 */
template <std::size_t N>
class MultiGraph final : public Graph1dBase
{
public:
    MultiGraph()
    {
        for (std::size_t i = 0; i < N; ++i)
            pointers_[i] = &curves_[i];
        setChannels(pointers_);
    }

    ~MultiGraph() override { announceEnd(); }

    std::array<double, N> evaluate(double time) const noexcept
    {
        std::array<double, N> values;
        for (std::size_t i = 0; i < N; ++i)
            values[i] = curves_[i].evaluate(time);
        return values;
    }

private:
    std::array<BezierCurve, N> curves_;
    std::array<BezierCurve*, N> pointers_;
};

} // namespace oribund
