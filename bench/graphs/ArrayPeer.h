#pragma once

#include "oribund/host/effects/curves/Keyframe.h"

#include <span>
#include <vector>

namespace bench
{

/**
 * The limit: a sorted array of times with binary search, and the rest of the keyframes in a second array. No observers,
 * no undo, no checks; but the same curve, tangents that follow their neighbours included.
 */
class ArrayPeer
{
public:
    double evaluate(double time) const noexcept;
    /** -1 when there is no keyframe at that time. */
    int indexAt(double time) const noexcept;
    void setValue(int index, double value) noexcept;
    int add(double time);
    void remove(int index);
    void assign(std::span<const oribund::Keyframe> keyframes);

    int size() const noexcept { return static_cast<int>(times_.size()); }

private:
    struct Payload {
        double value = 0.0;
        double inDt = 0.0;
        double inDv = 0.0; // the slope, if automatic
        double outDt = 0.0;
        double outDv = 0.0;
        bool smooth = false;
        bool automatic = true;
    };

    void refresh(int index) noexcept;
    void refreshAround(int index) noexcept;

    std::vector<double> times_;
    std::vector<Payload> payload_;
};

} // namespace bench
