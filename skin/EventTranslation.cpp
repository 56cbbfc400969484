#include "skin/EventTranslation.h"

#include "skin/QtConversions.h"

#include <QKeyEvent>
#include <QKeySequence>
#include <QMouseEvent>
#include <QWheelEvent>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace oribund::qt
{

using oribund::Event;
using oribund::EventCode;
using oribund::Key;

namespace
{

constexpr double kWheelNotch = 120.0;

unsigned modifiersOf(Qt::KeyboardModifiers modifiers)
{
    return (modifiers.testFlag(Qt::ControlModifier) ? Event::kCtrl : 0) |
           (modifiers.testFlag(Qt::ShiftModifier) ? Event::kShift : 0) |
           (modifiers.testFlag(Qt::AltModifier) ? Event::kAlt : 0) |
           (modifiers.testFlag(Qt::MetaModifier) ? Event::kMeta : 0);
}

oribund::MouseButton buttonOf(Qt::MouseButton button)
{
    switch (button) {
    case Qt::LeftButton:
        return oribund::MouseButton::Left;
    case Qt::RightButton:
        return oribund::MouseButton::Right;
    case Qt::MiddleButton:
        return oribund::MouseButton::Middle;
    default:
        return oribund::MouseButton::None;
    }
}

unsigned heldOf(Qt::MouseButtons buttons)
{
    unsigned held = 0;
    for (const auto button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
        if (buttons.testFlag(button))
            held |= static_cast<unsigned>(buttonOf(button));
    }
    return held;
}

EventCode codeOf(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
        return EventCode::MousePress;
    case QEvent::MouseButtonDblClick:
        return EventCode::MouseDoubleClick;
    case QEvent::MouseButtonRelease:
        return EventCode::MouseRelease;
    default:
        return EventCode::MouseMove;
    }
}

oribund::XY<int> pixelOf(const QPointF& p)
{
    return {static_cast<int>(std::floor(p.x())), static_cast<int>(std::floor(p.y()))};
}

constexpr std::array<std::pair<Qt::Key, Key>, 18> kKeys{{
    {Qt::Key_Return, Key::Enter},
    {Qt::Key_Enter, Key::Enter},
    {Qt::Key_Escape, Key::Escape},
    {Qt::Key_Tab, Key::Tab},
    {Qt::Key_Backtab, Key::Tab},
    {Qt::Key_Space, Key::Space},
    {Qt::Key_Left, Key::Left},
    {Qt::Key_Right, Key::Right},
    {Qt::Key_Up, Key::Up},
    {Qt::Key_Down, Key::Down},
    {Qt::Key_PageUp, Key::PageUp},
    {Qt::Key_PageDown, Key::PageDown},
    {Qt::Key_Home, Key::Home},
    {Qt::Key_End, Key::End},
    {Qt::Key_Delete, Key::Delete},
    {Qt::Key_Backspace, Key::Backspace},
    {Qt::Key_Menu, Key::Menu},
    {Qt::Key_F2, Key::F2},
}};

/** What a key types; of a key with Ctrl the letter on it. */
QString typedBy(const QKeyEvent& event)
{
    QString text = event.text();
    if (!text.isEmpty() && text.at(0).isPrint())
        return text;
    if (event.modifiers().testFlag(Qt::ControlModifier) && event.key() > Qt::Key_Space && event.key() < 0x80)
        return QString(QChar(event.key())).toLower();
    return {};
}

} // namespace

Event toEvent(const QMouseEvent& event)
{
    Event result = Event::plain(codeOf(event.type()));
    result.position = pixelOf(event.position());
    result.canvasPosition = result.position;
    result.button = buttonOf(event.button());
    result.buttons = heldOf(event.buttons());
    result.modifiers = modifiersOf(event.modifiers());
    return result;
}

Event toEvent(const QWheelEvent& event)
{
    // Qt turns the wheel sideways while Alt is held.
    const QPoint turned = event.angleDelta();
    const int delta = turned.y() != 0 || !event.modifiers().testFlag(Qt::AltModifier) ? turned.y() : turned.x();
    Event result = Event::mouseWheel(pixelOf(event.position()), delta / kWheelNotch, modifiersOf(event.modifiers()));
    result.buttons = heldOf(event.buttons());
    return result;
}

Event toEvent(const QKeyEvent& event)
{
    Event result = Event::plain(event.type() == QEvent::KeyRelease ? EventCode::KeyRelease : EventCode::KeyPress);
    result.modifiers = modifiersOf(event.modifiers());
    result.autoRepeat = event.isAutoRepeat();
    const auto known =
        std::find_if(kKeys.begin(), kKeys.end(), [&](const auto& key) { return key.first == event.key(); });
    if (known != kKeys.end()) {
        result.key = known->second;
        if (event.key() == Qt::Key_Backtab)
            result.modifiers |= Event::kShift;
        if (result.key == Key::Space)
            result.text = L" ";
        return result;
    }
    result.text = fromQt(typedBy(event));
    result.key = result.text.empty() ? Key::None : Key::Character;
    return result;
}

Qt::CursorShape toQt(oribund::MouseCursor cursor)
{
    switch (cursor) {
    case oribund::MouseCursor::ResizeHorizontal:
        return Qt::SizeHorCursor;
    case oribund::MouseCursor::ResizeVertical:
        return Qt::SizeVerCursor;
    case oribund::MouseCursor::Move:
        return Qt::SizeAllCursor;
    case oribund::MouseCursor::Cross:
    case oribund::MouseCursor::AddPoint:
        return Qt::CrossCursor;
    case oribund::MouseCursor::Hand:
        return Qt::PointingHandCursor;
    case oribund::MouseCursor::Text:
        return Qt::IBeamCursor;
    case oribund::MouseCursor::Inherit:
    case oribund::MouseCursor::Arrow:
        break;
    }
    return Qt::ArrowCursor;
}

} // namespace oribund::qt
