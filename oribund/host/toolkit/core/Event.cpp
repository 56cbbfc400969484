#include "oribund/host/toolkit/core/Event.h"

namespace oribund
{

namespace
{

Event mouse(EventCode code, const XY<int>& at, MouseButton button, unsigned held, unsigned modifiers)
{
    Event event;
    event.code = code;
    event.position = at;
    event.canvasPosition = at;
    event.button = button;
    event.buttons = held;
    event.modifiers = modifiers;
    return event;
}

} // namespace

Event Event::mousePress(const XY<int>& at, MouseButton button, unsigned modifiers)
{
    return mouse(EventCode::MousePress, at, button, static_cast<unsigned>(button), modifiers);
}

Event Event::mouseDoubleClick(const XY<int>& at, MouseButton button, unsigned modifiers)
{
    return mouse(EventCode::MouseDoubleClick, at, button, static_cast<unsigned>(button), modifiers);
}

Event Event::mouseMove(const XY<int>& at, MouseButton held, unsigned modifiers)
{
    return mouse(EventCode::MouseMove, at, MouseButton::None, static_cast<unsigned>(held), modifiers);
}

Event Event::mouseRelease(const XY<int>& at, MouseButton button, unsigned modifiers)
{
    return mouse(EventCode::MouseRelease, at, button, 0, modifiers);
}

Event Event::mouseWheel(const XY<int>& at, double notches, unsigned modifiers)
{
    Event event = mouse(EventCode::MouseWheel, at, MouseButton::None, 0, modifiers);
    event.wheel = notches;
    return event;
}

Event Event::keyPress(Key key, unsigned modifiers)
{
    Event event = plain(EventCode::KeyPress);
    event.key = key;
    event.modifiers = modifiers;
    if (key == Key::Space)
        event.text = L" ";
    return event;
}

Event Event::character(wchar_t typed, unsigned modifiers)
{
    Event event = keyPress(Key::Character, modifiers);
    event.text = WString(std::wstring_view(&typed, 1));
    return event;
}

Event Event::messageFrom(Glob* sender, const String& message)
{
    Event event = plain(EventCode::Message);
    event.message = message;
    event.sender = sender;
    return event;
}

Event Event::plain(EventCode code)
{
    Event event;
    event.code = code;
    return event;
}

} // namespace oribund
