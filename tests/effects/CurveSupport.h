#pragma once

#include "oribund/host/effects/curves/BezierCurve.h"

#include <initializer_list>
#include <random>
#include <utility>
#include <vector>

namespace oribund::test
{

inline Keyframe key(double time, double value, KeyframeType type = KeyframeType::Linear)
{
    Keyframe keyframe;
    keyframe.time = time;
    keyframe.value = value;
    keyframe.type = type;
    return keyframe;
}

inline Keyframe smooth(double time, double value)
{
    return key(time, value, KeyframeType::Smooth);
}

inline bool fill(Graph1dBase& curve, const std::vector<Keyframe>& keyframes)
{
    return curve.setKeyframes(std::span(&keyframes, 1));
}

/** Seeded, so that a failure comes again. */
class Random
{
public:
    explicit Random(unsigned seed)
        : engine_(seed)
    {
    }

    double real(double low, double high) { return std::uniform_real_distribution<double>(low, high)(engine_); }

    /** 0 to count - 1. */
    int index(int count) { return std::uniform_int_distribution<int>(0, count - 1)(engine_); }

    bool chance(double probability) { return real(0.0, 1.0) < probability; }

    /** Any keyframe a user can make: straight or smooth, tangents automatic or of any length. */
    Keyframe keyframe(double time)
    {
        Keyframe made = key(time, real(-1.0, 2.0), chance(0.5) ? KeyframeType::Smooth : KeyframeType::Linear);
        if (chance(0.4))
            made.in = {-real(0.0, 0.3), real(-1.0, 1.0), false};
        if (chance(0.4))
            made.out = {real(0.0, 0.3), real(-1.0, 1.0), false};
        return made;
    }

    std::vector<Keyframe> keyframes(int count)
    {
        std::vector<Keyframe> made;
        for (int i = 0; i < count; ++i)
            made.push_back(keyframe((i + real(0.1, 0.9)) / count));
        return made;
    }

private:
    std::mt19937 engine_;
};

} // namespace oribund::test
