#pragma once

namespace oribund
{

/** How a curve runs from a keyframe to the next one. */
enum class KeyframeType : int {
    Smooth = 0, ///< along the tangents of the two keyframes
    Linear = 1, ///< straight
};

/**
 * One end of a tangent: the offset, in time and value, from the keyframe to the handle that a user drags. An incoming
 * handle has `dt` <= 0, an outgoing one `dt` >= 0. An automatic handle follows its neighbours; its offset is 0.
 */
struct TangentHandle {
    double dt = 0.0;
    double dv = 0.0;
    bool automatic = true;

    bool operator==(const TangentHandle&) const = default;
};

/** A point that a curve passes through, as the user set it. Time is that of the graph: in one of a parameter effect
    time, 0 at the effect's start and 1 at its end. */
struct Keyframe {
    double time = 0.0;
    double value = 0.0;
    KeyframeType type = KeyframeType::Linear;
    TangentHandle in;
    TangentHandle out;

    bool operator==(const Keyframe&) const = default;
};

} // namespace oribund
