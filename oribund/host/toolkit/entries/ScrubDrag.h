#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/toolkit/core/GlobRef.h"

namespace oribund
{

class Event;
class NumericEntry;

/**
 * A press on a numeric entry, or on its label: a drag to the side changes the number, a click goes on to typing. Held
 * by the glob that is pressed; ends by exactly one of finish() and abort().
 *
 * The number follows the pointer from where the drag began, so that going back there brings the old one back. What the
 * entry calls may destroy it and this: nothing here is touched after a call of it.
 */
class ORIBUND_API ScrubDrag
{
public:
    /** The left button has gone down at pixel `x` of the canvas. */
    ScrubDrag(NumericEntry& entry, int x);

    /** False again when the entry is gone, or cannot be changed any more. */
    bool isOpen() const { return static_cast<bool>(entry_); }

    /** The pointer has moved; from here on a step goes `scale` times as far. */
    void motion(int x, double scale);

    /** The button was released: the number stands. */
    void finish();

    /** Puts the number back, and is no click either. */
    void abort();

    /** Whether a press of a key of its glob would give it up. */
    bool usesKey(const Event& press) const;

    /** Takes an event of its glob while it is open: motion, release, Escape, or the loss of the pointer. */
    bool handle(const Event& event);

private:
    double stepsAt(int x) const;
    void start(int x, double scale);

    GlobRef<NumericEntry> entry_;
    bool moving_ = false;
    int from_;            ///< where the pointer was with `before_`
    int at_;              ///< where it is
    double before_ = 0.0; ///< steps with another scale
    double scale_ = 1.0;
};

} // namespace oribund
