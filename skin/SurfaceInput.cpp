// What the user does on a surface, handed to the tree.

#include "skin/EventTranslation.h"
#include "skin/PanelSurface.h"
#include "skin/QtConversions.h"
#include "skin/TextEditor.h"

#include "oribund/host/toolkit/core/EventRouter.h"
#include "oribund/host/toolkit/core/Glob.h"

#include <QCoreApplication>
#include <QHelpEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolTip>
#include <QWheelEvent>

namespace oribund::qt
{

using oribund::Event;
using oribund::EventCode;
using oribund::Glob;

namespace
{

bool isPress(const QMouseEvent& event)
{
    return event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick;
}

} // namespace

bool PanelSurface::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        // A key that the panel has a use for is not a command of the window.
        if (router() && router()->usesKey(toEvent(static_cast<QKeyEvent&>(*event))))
            event->accept();
        return true;
    case QEvent::ToolTip: {
        const auto& help = static_cast<QHelpEvent&>(*event);
        return showTooltip(help.pos(), help.globalPos());
    }
    default:
        return QWidget::event(event);
    }
}

bool PanelSurface::showTooltip(const QPoint& at, const QPoint& onScreen)
{
    const Glob* glob = router() ? router()->globAt(fromQt(at)) : nullptr;
    for (; glob; glob = glob->parent()) {
        if (const QString tip = toDisplay(glob->tooltip()); !tip.isEmpty()) {
            QToolTip::showText(onScreen, toTooltip(tip), this, placeOf(*glob));
            return true;
        }
    }
    QToolTip::hideText();
    return false;
}

// The mouse

void PanelSurface::mousePressEvent(QMouseEvent* event)
{
    pass(*event);
}

void PanelSurface::mouseDoubleClickEvent(QMouseEvent* event)
{
    pass(*event);
}

void PanelSurface::mouseMoveEvent(QMouseEvent* event)
{
    endLostDrag(event->buttons());
    pass(*event);
}

void PanelSurface::mouseReleaseEvent(QMouseEvent* event)
{
    pass(*event);
}

void PanelSurface::endLostDrag(Qt::MouseButtons held)
{
    // Menus and dialogs that open on a press take the release that belongs to it.
    if (held == Qt::NoButton && router() && router()->grabOwner())
        canvas_.inject(Event::plain(EventCode::MouseCancel));
}

void PanelSurface::pass(QMouseEvent& event)
{
    pointer_ = event.position().toPoint();
    if (isPress(event)) {
        passPress(event);
    } else {
        if (editorPressed_ && editor_)
            passToEditor(event);
        editorPressed_ = editorPressed_ && event.type() == QEvent::MouseMove;
        canvas_.inject(toEvent(event));
    }
    showCursor();
}

void PanelSurface::passPress(QMouseEvent& event)
{
    const Event translated = toEvent(event);
    if (translated.button == oribund::MouseButton::None) {
        event.ignore();
        return;
    }
    const QPointer<TextEditor> before = editor_;
    const bool taken = canvas_.inject(translated);
    // What was pressed may take no keyboard, yet Escape in its drag comes here.
    if (!hasKeyboard())
        setFocus(Qt::MouseFocusReason);
    if (!editor_ || !editor_->geometry().contains(pointer_))
        return;
    if (event.button() == Qt::RightButton && !taken)
        editor_->openTextMenu(event.globalPosition().toPoint());
    editorPressed_ = event.button() == Qt::LeftButton && event.type() == QEvent::MouseButtonPress && editor_ != before;
    if (editorPressed_)
        passToEditor(event);
}

void PanelSurface::passToEditor(const QMouseEvent& event)
{
    QMouseEvent moved(event.type(), event.position() - editor_->pos(), event.globalPosition(), event.button(),
                      event.buttons(), event.modifiers());
    QCoreApplication::sendEvent(editor_, &moved);
}

void PanelSurface::showCursor()
{
    if (!router())
        return;
    const oribund::XY<int> at = fromQt(pointer_);
    const Glob* glob = router()->grabOwner() ? router()->grabOwner() : router()->globAt(at);
    const Qt::CursorShape shape = glob ? toQt(glob->cursorAt(glob->fromCanvas(at))) : Qt::ArrowCursor;
    if (cursor().shape() != shape)
        setCursor(shape);
}

void PanelSurface::wheelEvent(QWheelEvent* event)
{
    event->setAccepted(canvas_.inject(toEvent(*event)));
}

void PanelSurface::leaveEvent(QEvent*)
{
    canvas_.inject(Event::plain(EventCode::MouseLeave));
}

// The keyboard

void PanelSurface::keyPressEvent(QKeyEvent* event)
{
    const Event key = toEvent(*event);
    event->setAccepted(key.key != oribund::Key::None && canvas_.inject(key));
}

void PanelSurface::keyReleaseEvent(QKeyEvent* event)
{
    keyPressEvent(event);
}

void PanelSurface::inputMethodEvent(QInputMethodEvent* event)
{
    // What is only being composed needs an editor first.
    if (!event->preeditString().isEmpty())
        canvas_.inject(Event::keyPress(oribund::Key::F2));
    if (editor_) {
        editor_->selectAll();
        QCoreApplication::sendEvent(editor_, event);
        return;
    }
    for (const wchar_t typed : event->commitString().toStdWString())
        canvas_.inject(Event::character(typed));
}

} // namespace oribund::qt
