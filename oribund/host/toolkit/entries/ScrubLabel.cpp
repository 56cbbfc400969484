#include "oribund/host/toolkit/entries/ScrubLabel.h"

#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/GlobChange.h"
#include "oribund/host/toolkit/entries/NumericEntry.h"

namespace oribund
{

ScrubLabel::ScrubLabel(const InitArgs& args)
    : Label(args)
{
}

ScrubLabel::~ScrubLabel()
{
    // The entry is not to wait for a release that comes no more.
    if (drag_)
        drag_->handle(Event::plain(EventCode::MouseCancel));
}

void ScrubLabel::setEntry(NumericEntry* entry)
{
    if (drag_)
        drag_->handle(Event::plain(EventCode::MouseCancel));
    entry_ = GlobRef<NumericEntry>(entry);
    changed(GlobChange::kCursor);
}

MouseCursor ScrubLabel::contextCursor(const XY<int>& local) const
{
    return entry_ && entry_->canScrub() ? MouseCursor::ResizeHorizontal : Label::contextCursor(local);
}

bool ScrubLabel::handleMouseEvent(const Event& event)
{
    if (drag_ && drag_->handle(event))
        return true;
    if (!event.isPress(MouseButton::Left) || !entry_ || !entry_->canInteract())
        return Label::handleMouseEvent(event);
    if (event.code == EventCode::MouseDoubleClick)
        entry_->userReset();
    else
        drag_ = std::make_unique<ScrubDrag>(*entry_, event.canvasPosition.x);
    return true;
}

bool ScrubLabel::usesKey(const Event& press) const
{
    return (drag_ && drag_->usesKey(press)) || Label::usesKey(press);
}

bool ScrubLabel::handleKeyEvent(const Event& event)
{
    return (drag_ && drag_->handle(event)) || Label::handleKeyEvent(event);
}

} // namespace oribund
