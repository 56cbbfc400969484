#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/XY.h"

namespace oribund
{

class Glob;

/** What kind of event. The numbers of messages are fixed. */
enum class EventCode : unsigned {
    MousePress = 0x1001,
    MouseDoubleClick = 0x1002, ///< the second press of two, instead of a MousePress
    MouseMove = 0x1003,
    MouseRelease = 0x1004,
    MouseWheel = 0x1005,
    MouseEnter = 0x1006,
    MouseLeave = 0x1007,
    MouseCancel = 0x1008, ///< the pointer was taken away during a drag: there will be no release
    KeyPress = 0x2001,
    KeyRelease = 0x2002,
    FocusIn = 0x3001,
    FocusOut = 0x3002,
    Message = 0x4001,
};

enum class MouseButton : unsigned { None = 0, Left = 1, Right = 2, Middle = 4 };

enum class Key {
    None,
    Character, ///< what was typed is the event's text
    Enter,
    Escape,
    Tab,
    Space,
    Left,
    Right,
    Up,
    Down,
    PageUp,
    PageDown,
    Home,
    End,
    Delete,
    Backspace,
    Menu,
    F2,
};

/** What happened to a glob: a thing the user did with mouse or keyboard, a change of focus, or a message. */
class ORIBUND_API Event
{
public:
    /** Bits of `modifiers`. */
    static constexpr unsigned kCtrl = 0x1000000;
    static constexpr unsigned kShift = 0x2000000;
    static constexpr unsigned kAlt = 0x4000000;
    static constexpr unsigned kMeta = 0x8000000;

    EventCode code = EventCode::Message;
    /** The pointer, in coordinates of the glob that receives the event; of the canvas while it is on its way. */
    XY<int> position;
    XY<int> canvasPosition;
    /** Of a press or release: the button concerned. */
    MouseButton button = MouseButton::None;
    /** The buttons held, as bits of MouseButton: after a press with its button, after a release without. */
    unsigned buttons = 0;
    unsigned modifiers = 0;
    /** Notches of the wheel, away from the user positive; fractions from fine wheels and touch pads. */
    double wheel = 0.0;
    Key key = Key::None;
    /** Of a key: what it types. */
    WString text;
    bool autoRepeat = false;
    String message;
    /** Of a message: who sent it, null when it is gone. Valid during the call. */
    Glob* sender = nullptr;

    static Event mousePress(const XY<int>& at, MouseButton button = MouseButton::Left, unsigned modifiers = 0);
    static Event mouseDoubleClick(const XY<int>& at, MouseButton button = MouseButton::Left, unsigned modifiers = 0);
    static Event mouseMove(const XY<int>& at, MouseButton held = MouseButton::None, unsigned modifiers = 0);
    static Event mouseRelease(const XY<int>& at, MouseButton button = MouseButton::Left, unsigned modifiers = 0);
    static Event mouseWheel(const XY<int>& at, double notches, unsigned modifiers = 0);
    static Event keyPress(Key key, unsigned modifiers = 0);
    static Event character(wchar_t typed, unsigned modifiers = 0);
    static Event messageFrom(Glob* sender, const String& message);

    /** An event of that code and nothing else. */
    static Event plain(EventCode code);

    bool isMouse() const { return (static_cast<unsigned>(code) & 0xf000) == 0x1000; }

    bool isKey() const { return (static_cast<unsigned>(code) & 0xf000) == 0x2000; }

    /** A press with this button, the second of a double click included. */
    bool isPress(MouseButton which) const
    {
        return (code == EventCode::MousePress || code == EventCode::MouseDoubleClick) && button == which;
    }

    bool isKeyPress(Key which) const { return code == EventCode::KeyPress && key == which; }

    /** A press of a key without Ctrl, Alt or Meta, which belong to commands. */
    bool isPlainKeyPress() const { return code == EventCode::KeyPress && !has(kCtrl | kAlt | kMeta); }

    bool isHeld(MouseButton which) const { return (buttons & static_cast<unsigned>(which)) != 0; }

    bool has(unsigned modifier) const { return (modifiers & modifier) != 0; }
};

} // namespace oribund
