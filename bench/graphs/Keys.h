#pragma once

#include "oribund/host/effects/curves/Keyframe.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <random>
#include <vector>

namespace bench
{

enum class Shape {
    Straight,
    Smooth,  ///< with tangents that follow their neighbours
    Handles, ///< smooth, with explicit handles of several lengths
};

/** `count` keyframes between 0 and 1, evenly spaced but for a jitter. */
inline std::vector<oribund::Keyframe> keyframes(int count, Shape shape)
{
    std::mt19937 engine(42);
    std::uniform_real_distribution<double> real(0.1, 0.9);
    std::vector<oribund::Keyframe> made(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        oribund::Keyframe& keyframe = made[static_cast<std::size_t>(i)];
        keyframe.time = (i + real(engine)) / count;
        keyframe.value = real(engine);
        if (shape != Shape::Straight)
            keyframe.type = oribund::KeyframeType::Smooth;
        if (shape == Shape::Handles) {
            keyframe.in = {-0.08 * real(engine) / count, 0.1, false};
            keyframe.out = {0.08 * real(engine) / count, 0.1, false};
        }
    }
    return made;
}

/** Enough to keep branch predictors from learning them. */
inline std::vector<double> randomTimes()
{
    std::mt19937 engine(7);
    std::uniform_real_distribution<double> real(0.0, 1.0);
    std::vector<double> times(1 << 14);
    for (double& time : times)
        time = real(engine);
    return times;
}

/** At least as many indices below `count`, shuffled. */
inline std::vector<std::size_t> randomOrder(std::size_t count)
{
    std::vector<std::size_t> order(std::max<std::size_t>(count, 1 << 14));
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i % count;
    std::shuffle(order.begin(), order.end(), std::mt19937(3));
    return order;
}

} // namespace bench
