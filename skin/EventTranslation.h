#pragma once

#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/MouseCursor.h"

#include <Qt>

class QKeyEvent;
class QMouseEvent;
class QWheelEvent;

/** Qt's input events as the library's; positions are those of the widget that got them. */
namespace oribund::qt
{

/** A press, double click, release or move, as the Qt event's type says. */
oribund::Event toEvent(const QMouseEvent& event);

oribund::Event toEvent(const QWheelEvent& event);

/** A press or release. Key::None for a key that the library has no name for and that types nothing. */
oribund::Event toEvent(const QKeyEvent& event);

Qt::CursorShape toQt(oribund::MouseCursor cursor);

} // namespace oribund::qt
