#pragma once

#include "workbench/model/EditData.h"

namespace workbench
{

/**
 * Between effect time, 0..1 over a segment, and frames. Moves keyframes when a segment gets another length or start, so
 * that they stay at the frames at which they were; those that end up outside keep shaping the curve inside.
 */
class KeyframeTimes
{
public:
    /** `shift`: how many frames of the new segment lie before the old one's first. */
    KeyframeTimes(int oldLength, int newLength, int shift);

    ParamData moved(ParamData param) const;

    /** The parameter with a keyframe at an effect time where its curve lies between two, and runs on as it did. */
    static ParamData divided(const ParamData& param, double fxTime);

    /** The frame of an effect time, exactly whole where it is meant to be. */
    static double toFrame(double fxTime, int length);

    static double toTime(double frame, int length) { return frame / length; }

private:
    int oldLength_;
    int newLength_;
    int shift_;
};

} // namespace workbench
