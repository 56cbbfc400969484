// How a glob comes by the keyboard and by events, and what it does with them unless it knows better.

#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/EventRouter.h"
#include "oribund/host/toolkit/core/Glob.h"

namespace oribund
{

// Focus

bool Glob::focusOnPress(const XY<int>&) const
{
    return true;
}

bool Glob::hasFocus() const
{
    const Canvas* where = canvas();
    return where && where->focusOwner() == this;
}

bool Glob::takeFocus()
{
    if (!canTakeFocus())
        return false;
    GlobRef<Glob> self(this);
    EventRouter::of(*canvas()).setFocus(this);
    if (!self || !hasFocus())
        return false;
    reveal(focusArea());
    return self && hasFocus();
}

void Glob::dropFocus()
{
    if (hasFocus())
        EventRouter::of(*canvas()).setFocus(nullptr);
}

void Glob::releaseInput()
{
    if (EventRouter* router = EventRouter::find(canvas()))
        router->release(*this);
}

// Events

bool Glob::react(const Event& event)
{
    if (event.isMouse())
        return handleMouseEvent(event);
    if (event.code == EventCode::KeyPress && !usesKey(event))
        return false;
    if (event.isKey())
        return handleKeyEvent(event);
    switch (event.code) {
    case EventCode::FocusIn:
    case EventCode::FocusOut:
        handleFocusEvent(event.code == EventCode::FocusIn);
        return true;
    case EventCode::Message:
        return handleMessageEvent(event.message, event.sender);
    default:
        return false;
    }
}

bool Glob::sendMsg(const String& message)
{
    Event event = Event::messageFrom(this, message);
    const GlobRef<Glob> self(this);
    GlobRef<Glob> receiver(this);
    while (receiver) {
        event.sender = self.get(); // a receiver may have destroyed it
        const GlobRef<Glob> next(receiver->parent_);
        if (receiver->react(event))
            return true;
        receiver = next;
    }
    return false;
}

bool Glob::handleMouseEvent(const Event&)
{
    return false;
}

bool Glob::usesKey(const Event&) const
{
    return false;
}

bool Glob::handleKeyEvent(const Event&)
{
    return false;
}

void Glob::handleFocusEvent(bool) {}

// Those who do not see it

AccessibleDescription Glob::accessible(int part) const
{
    AccessibleDescription description;
    description.enabled = canInteract();
    if (part != kWhole) {
        describePart(part, description);
        return description;
    }
    description.name = accessibleName();
    description.help = tooltip();
    description.box = localBox();
    description.focusable = wantsFocus();
    description.focused = hasFocus();
    description.visible = isShown() && !seenOnCanvas(localBox()).empty();
    describe(description);
    return description;
}

bool Glob::handleMessageEvent(const String&, Glob*)
{
    return false;
}

} // namespace oribund
