#include "oribund/controls/bars/ThermDrag.h"

#include "oribund/controls/bars/ThermBase.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/GlobRef.h"

#include <algorithm>

namespace oribund
{

ThermDrag::~ThermDrag() = default;

MouseButton ThermDrag::button() const
{
    return MouseButton::Left;
}

double ThermDrag::timeAt(int x) const
{
    return bar_.geometry().x2f(static_cast<double>(x) + offset_);
}

void ThermDrag::bringTimeIntoView()
{
    const double time = bar_.getTime(eExact);
    const ThermGeometry shown = bar_.geometry();
    if (time < shown.windowStart || time > shown.windowEnd)
        bar_.setTime(time);
}

namespace
{

/** Drags the current time, and for a grabbed window that as well. One series of time changes. */
class TimeDrag final : public ThermDrag
{
public:
    TimeDrag(ThermBase& bar, ThermHit hit, int x, int offset)
        : ThermDrag(bar, hit, offset)
        , lastX_(x)
        , timeBefore_(bar.getTime(eExact))
        , windowBefore_(bar.geometry().windowStart, bar.geometry().windowEnd)
        , windowOffset_(bar.geometry().f2x(windowBefore_.start()) - x)
    {
    }

    void begin() override { bar_.startTimeChangeSeries(); }

    void motion(int x) override
    {
        if (x == lastX_)
            return;
        lastX_ = x;
        const GlobRef<ThermBase> alive(&bar_);
        bar_.setTime(bar_.constrainTime(bar_.snapTime(timeAt(x))));
        if (alive && movesWindow())
            moveWindow(x);
    }

    void finish() override
    {
        const GlobRef<ThermBase> alive(&bar_);
        if (movesWindow())
            bringTimeIntoView();
        if (alive)
            bar_.stopTimeChangeSeries();
    }

    void abort() override
    {
        const GlobRef<ThermBase> alive(&bar_);
        bar_.setTime(timeBefore_);
        if (alive && movesWindow())
            bar_.setWindow(windowBefore_);
        if (alive)
            bar_.stopTimeChangeSeries();
    }

private:
    bool movesWindow() const { return hit() == ThermHit::WindowBody; }

    /** The window keeps its length, and its own distance from the pointer: at the first move nothing jumps. */
    void moveWindow(int x)
    {
        const ThermGeometry shown = bar_.geometry();
        const double last = std::max(shown.start, shown.end - windowBefore_.length());
        const double from = std::clamp(shown.x2f(x + windowOffset_), shown.start, last);
        bar_.setWindow({from, from + windowBefore_.length()});
    }

    int lastX_;
    double timeBefore_;
    NumRange<double> windowBefore_;
    double windowOffset_;
};

/** Zooms about the current time. */
class EdgeDrag final : public ThermDrag
{
public:
    EdgeDrag(ThermBase& bar, ThermHit hit, int offset)
        : ThermDrag(bar, hit, offset)
        , windowBefore_(bar.geometry().windowStart, bar.geometry().windowEnd)
    {
    }

    void motion(int x) override
    {
        bar_.setWindow(bar_.geometry().draggedEdge(hit(), timeAt(x), bar_.getTime(eExact), bar_.leastWindow()));
    }

    void finish() override { bringTimeIntoView(); }

    void abort() override { bar_.setWindow(windowBefore_); }

private:
    NumRange<double> windowBefore_;
};

} // namespace

std::unique_ptr<ThermDrag> ThermDrag::make(ThermBase& bar, ThermHit hit, int x)
{
    const ThermGeometry shown = bar.geometry();
    switch (hit) {
    case ThermHit::LeftEdge:
        return std::make_unique<EdgeDrag>(bar, hit, shown.wholePixel(shown.windowStart) - x);
    case ThermHit::RightEdge:
        return std::make_unique<EdgeDrag>(bar, hit, shown.wholePixel(shown.windowEnd) - x);
    case ThermHit::WindowBody:
        return std::make_unique<TimeDrag>(bar, hit, x, shown.wholePixel(bar.getTime(eExact)) - x);
    case ThermHit::None:
    case ThermHit::CurrentTime:
    case ThermHit::Keyframe:
        break;
    }
    return std::make_unique<TimeDrag>(bar, ThermHit::CurrentTime, x, 0);
}

} // namespace oribund
