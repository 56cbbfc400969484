#pragma once

#include "oribund/host/effects/curves/Graph1dBase.h"

namespace oribund
{

/** A graph of one channel whose values are of type `T`. */
template <class T>
class Graph1d;

template <>
class ORIBUND_API Graph1d<double> : public Graph1dBase
{
public:
    /**
     * The value at a time: before the first keyframe that of the first, after the last that of the last, and without
     * any keyframe the rest value. At the time of a keyframe exactly its value.
     */
    virtual double evaluate(double time) const noexcept = 0;

    /** The index must exist. */
    virtual Keyframe keyframe(int index) const noexcept = 0;
    virtual double valueAt(int index) const noexcept = 0;

    /** True when the keyframe has that value now, whether or not it had it before. */
    virtual bool setKeyframeValue(int index, double value, ChangeKind kind = ChangeKind::Single) = 0;

    /** Replaces value, type and tangents of a keyframe, and moves it if the time differs. */
    virtual bool setKeyframe(int index, const Keyframe& keyframe, ChangeKind kind = ChangeKind::Single) = 0;

protected:
    Graph1d() = default;
};

} // namespace oribund
