#include "skin/GlobSurface.h"

#include "skin/EventTranslation.h"
#include "skin/PanelView.h"
#include "skin/QPainterRenderer.h"
#include "skin/QtConversions.h"

#include "oribund/host/toolkit/core/EventRouter.h"
#include "oribund/host/toolkit/core/Glob.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

namespace workbench
{

using oribund::Event;
using oribund::EventCode;
using oribund::EventRouter;

GlobSurface::GlobSurface(oribund::Glob& glob, QWidget& parent)
    : QWidget(&parent)
    , glob_(&glob)
{
    setMouseTracking(true);
    // The library moves the focus, and asks for menus, itself.
    setFocusPolicy(Qt::NoFocus);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setAttribute(Qt::WA_NoMousePropagation);
}

void GlobSurface::detach()
{
    glob_ = nullptr;
}

bool GlobSurface::event(QEvent* event)
{
    if (!glob_)
        return QWidget::event(event);
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        // A key that the control has a use for is not a command of the window.
        if (const EventRouter* router = EventRouter::find(glob_->canvas());
            router && router->usesKey(toEvent(static_cast<QKeyEvent&>(*event))))
            event->accept();
        return true;
    case QEvent::ToolTip: {
        const QString tip = toDisplay(glob_->tooltip());
        if (tip.isEmpty())
            return false; // the parent may have one
        QToolTip::showText(static_cast<QHelpEvent&>(*event).globalPos(), tip.toHtmlEscaped(), this);
        return true;
    }
    default:
        return QWidget::event(event);
    }
}

void GlobSurface::paintEvent(QPaintEvent*)
{
    if (!glob_)
        return;
    QPainter painter(this);
    QPainterRenderer renderer(painter);
    glob_->draw(renderer);
}

void GlobSurface::mousePressEvent(QMouseEvent* event)
{
    passMouse(*event);
}

void GlobSurface::mouseDoubleClickEvent(QMouseEvent* event)
{
    passMouse(*event);
}

void GlobSurface::mouseMoveEvent(QMouseEvent* event)
{
    if (glob_)
        showCursorAt(*glob_, event->position().toPoint());
    passMouse(*event);
}

void GlobSurface::mouseReleaseEvent(QMouseEvent* event)
{
    passMouse(*event);
}

void GlobSurface::endLostDrag(Qt::MouseButtons held)
{
    // Menus and dialogs that open on a press take the release that belongs to it.
    EventRouter* router = EventRouter::find(glob_->canvas());
    if (held == Qt::NoButton && router && router->grabOwner())
        glob_->userEvent(Event::plain(EventCode::MouseCancel));
}

void GlobSurface::passMouse(QMouseEvent& event)
{
    const Event translated = toEvent(event);
    const bool isPress = event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick;
    if (!glob_ || (isPress && translated.button == oribund::MouseButton::None)) {
        event.ignore();
        return;
    }
    if (event.type() == QEvent::MouseMove)
        endLostDrag(event.buttons());
    if (glob_)
        glob_->userEvent(translated);
    // What was pressed may take no keyboard.
    if (PanelView* view = isPress && glob_ ? PanelView::around(this) : nullptr)
        view->takeStrayKeys();
}

void GlobSurface::showCursorAt(const oribund::Glob& glob, const QPoint& at)
{
    const Qt::CursorShape shape = toQt(glob.cursorAt(fromQt(at)));
    if (cursor().shape() != shape)
        setCursor(shape);
}

void GlobSurface::wheelEvent(QWheelEvent* event)
{
    const bool taken = glob_ && glob_->userEvent(toEvent(*event));
    event->accept();
    // The glob has offered it to those around it already: it goes straight to what scrolls.
    if (PanelView* view = taken ? nullptr : PanelView::around(this))
        view->scrollByWheel(*event);
}

void GlobSurface::keyPressEvent(QKeyEvent* event)
{
    passKey(*event);
}

void GlobSurface::keyReleaseEvent(QKeyEvent* event)
{
    passKey(*event);
}

void GlobSurface::passKey(QKeyEvent& event)
{
    const Event translated = toEvent(event);
    const bool taken = glob_ && translated.key != oribund::Key::None && glob_->userEvent(translated);
    event.accept();
    if (PanelView* view = taken ? nullptr : PanelView::around(this))
        view->passUnusedKey(event);
}

void GlobSurface::focusInEvent(QFocusEvent* event)
{
    if (!glob_)
        return;
    if (PanelView* view = PanelView::around(this); view && event->reason() != Qt::MouseFocusReason)
        view->ensureWidgetVisible(this);
    glob_->userFocus(true);
}

void GlobSurface::focusOutEvent(QFocusEvent* event)
{
    // A menu borrows the keyboard only.
    if (glob_ && event->reason() != Qt::PopupFocusReason)
        glob_->userFocus(false);
}

void GlobSurface::leaveEvent(QEvent*)
{
    if (glob_)
        glob_->userEvent(Event::plain(EventCode::MouseLeave));
}

bool GlobSurface::focusNextPrevChild(bool next)
{
    PanelView* view = PanelView::around(this);
    return glob_ && view ? view->moveFocus(next) : QWidget::focusNextPrevChild(next);
}

} // namespace workbench
