#pragma once

#include "oribund/controls/bars/ThermGeometry.h"

#include <memory>

namespace oribund
{

class ThermBase;
enum class MouseButton : unsigned;

/** A drag on a time bar, from its press on. Ends by exactly one of finish() and abort(). */
class ThermDrag
{
public:
    virtual ~ThermDrag();

    ThermDrag(const ThermDrag&) = delete;
    ThermDrag& operator=(const ThermDrag&) = delete;

    /** The drag for a press at pixel `x` on `hit`. A press on the plain bar drags the current time. */
    static std::unique_ptr<ThermDrag> make(ThermBase& bar, ThermHit hit, int x);

    ThermHit hit() const { return hit_; }

    /** The button that holds it. */
    virtual MouseButton button() const;

    /** It is the bar's drag from now on. */
    virtual void begin() {}

    /** The pointer has moved. */
    virtual void motion(int x) = 0;

    /** The button was released: what was set stands. */
    virtual void finish() = 0;

    /** Restores what was there before the press. */
    virtual void abort() = 0;

protected:
    ThermDrag(ThermBase& bar, ThermHit hit, int offset)
        : bar_(bar)
        , hit_(hit)
        , offset_(offset)
    {
    }

    /** The time at the pointer, with what is grabbed as far from it as at the press. */
    double timeAt(int x) const;

    /** Sets the time again where the window has left it, so that the owner brings it into view. */
    void bringTimeIntoView();

    ThermBase& bar_;

private:
    ThermHit hit_;
    int offset_;
};

} // namespace oribund
