#include "oribund/host/toolkit/entries/ScrubDrag.h"

#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/entries/NumericEntry.h"

#include <cstdlib>
#include <utility>

namespace oribund
{

namespace
{

/** A hand that clicks does not hold quite still. Pixels. */
constexpr int kSlack = 3;

constexpr int kPixelsPerStep = 2;

} // namespace

ScrubDrag::ScrubDrag(NumericEntry& entry, int x)
    : entry_(&entry)
    , from_(x)
    , at_(x)
{
}

double ScrubDrag::stepsAt(int x) const
{
    const int whole = (x - from_) / kPixelsPerStep;
    return before_ + whole * scale_;
}

void ScrubDrag::start(int x, double scale)
{
    // The number starts to move where the slack ends, without a jump.
    from_ += x > from_ ? kSlack : -kSlack;
    at_ = from_;
    scale_ = scale;
    moving_ = entry_->userScrubStart();
    if (!moving_)
        entry_.reset();
}

void ScrubDrag::motion(int x, double scale)
{
    if (entry_ && !moving_ && std::abs(x - from_) > kSlack)
        start(x, scale);
    if (!entry_ || !moving_)
        return;
    if (scale != scale_) {
        before_ = stepsAt(at_);
        from_ = at_;
        scale_ = scale;
    }
    at_ = x;
    entry_->userScrub(stepsAt(x));
}

void ScrubDrag::finish()
{
    const GlobRef<NumericEntry> entry = std::exchange(entry_, {});
    if (!entry)
        return;
    if (moving_)
        entry->userScrubEnd();
    else
        entry->userStartEditing();
}

void ScrubDrag::abort()
{
    const GlobRef<NumericEntry> entry = std::exchange(entry_, {});
    if (entry && moving_)
        entry->userScrubCancel();
}

bool ScrubDrag::usesKey(const Event& press) const
{
    return isOpen() && press.isKeyPress(Key::Escape);
}

bool ScrubDrag::handle(const Event& event)
{
    if (!isOpen())
        return false;
    switch (event.code) {
    case EventCode::MouseMove:
        motion(event.canvasPosition.x, NumericEntry::stepScale(event));
        return true;
    case EventCode::MouseRelease:
        if (event.button == MouseButton::Left)
            finish();
        return true;
    case EventCode::MouseCancel:
        // What was set before the pointer was taken away stands: the user has seen it.
        if (moving_)
            finish();
        else
            abort();
        return true;
    case EventCode::KeyPress:
        if (!usesKey(event))
            return false;
        abort();
        return true;
    default:
        return event.isMouse();
    }
}

} // namespace oribund
