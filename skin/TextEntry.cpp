#include "skin/TextEntry.h"

#include "skin/EventTranslation.h"
#include "skin/PanelView.h"
#include "skin/QtConversions.h"

#include "oribund/host/canvas/ColourScheme.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/entries/TextBox.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>

namespace workbench
{

using oribund::Event;
using oribund::EventCode;
using oribund::GlobRef;
using oribund::Key;
using oribund::TextBox;

TextEntry::TextEntry(TextBox& box, QWidget& parent)
    : QLineEdit(&parent)
    , box_(&box)
{
    setFocusPolicy(Qt::ClickFocus); // Tab follows the panel's order
    setTextMargins(2, 0, 2, 0);
    connect(this, &QLineEdit::textEdited, [this](const QString& text) {
        if (box_)
            box_->userEdit(fromQt(text));
    });
}

void TextEntry::showProblem()
{
    const QString problem = toQt(box_->getProblem());
    if (problem == accessibleDescription())
        return;
    setAccessibleDescription(problem);
    if (problem.isEmpty())
        QToolTip::hideText();
    else if (isVisible())
        QToolTip::showText(mapToGlobal(QPoint(0, height() / 2)), problem.toHtmlEscaped(), this);
}

void TextEntry::followMouseUse()
{
    // A press that may become a drag is not to bring the keyboard; the box takes it when it was a click.
    setFocusPolicy(box_->ownsPress() ? Qt::NoFocus : Qt::ClickFocus);
    const Qt::CursorShape shape = toQt(box_->cursorAt({}));
    if (cursor().shape() != shape)
        setCursor(shape);
}

bool TextEntry::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && box_) {
        const QString tip = toDisplay(box_->tooltip());
        if (!tip.isEmpty())
            QToolTip::showText(static_cast<QHelpEvent&>(*event).globalPos(), tip.toHtmlEscaped(), this);
        return !tip.isEmpty();
    }
    if (event->type() == QEvent::ShortcutOverride && box_ && claims(static_cast<QKeyEvent&>(*event)))
        event->accept();
    return QLineEdit::event(event);
}

void TextEntry::paintEvent(QPaintEvent* event)
{
    QLineEdit::paintEvent(event);
    if (!box_ || box_->getProblem().empty())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(toQt(oribund::UifStd::getColourScheme().error));
    painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
}

// Keys

bool TextEntry::claims(const QKeyEvent& event) const
{
    const Event key = toEvent(event);
    switch (key.key) {
    case Key::Enter:
        return true;
    case Key::Up:
    case Key::Down:
        return !key.has(Event::kAlt | Event::kMeta);
    case Key::Escape:
        return box_->canCancel();
    default:
        return false;
    }
}

void TextEntry::keyPressEvent(QKeyEvent* event)
{
    // The keys that mean something to the box rather than to the text.
    const GlobRef<TextBox> box(box_);
    if (!box || !claims(*event) || !box->react(toEvent(*event))) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    event->accept();
    if (box && !box->isEditing())
        selectAll();
}

void TextEntry::wheelEvent(QWheelEvent* event)
{
    const bool taken = box_ && box_->userEvent(toEvent(*event));
    event->accept();
    if (PanelView* view = taken ? nullptr : PanelView::around(this))
        view->scrollByWheel(*event);
}

// The keyboard

void TextEntry::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    if (!box_)
        return;
    if (event->reason() == Qt::MouseFocusReason) {
        selectOnRelease_ = true;
    } else if (event->reason() != Qt::PopupFocusReason) {
        selectAll();
        if (PanelView* view = PanelView::around(this))
            view->ensureWidgetVisible(this);
    }
    box_->userFocus(true);
}

void TextEntry::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    if (!box_ || event->reason() == Qt::PopupFocusReason)
        return;
    deselect();
    box_->userFocus(false);
}

bool TextEntry::focusNextPrevChild(bool next)
{
    PanelView* view = PanelView::around(this);
    return box_ && view ? view->moveFocus(next) : QLineEdit::focusNextPrevChild(next);
}

// The mouse

bool TextEntry::passPress(QMouseEvent& event)
{
    if (box_ && passesMouse_) {
        box_->userEvent(toEvent(event)); // another button during a drag
        return true;
    }
    if (!box_ || !box_->ownsPress())
        return false;
    if (event.button() != Qt::LeftButton) {
        setFocus(Qt::MouseFocusReason);
        return false;
    }
    passesMouse_ = true;
    const GlobRef<TextBox> box(box_);
    box_->userEvent(toEvent(event));
    if (PanelView* view = box ? PanelView::around(this) : nullptr)
        view->takeStrayKeys();
    return true;
}

void TextEntry::mousePressEvent(QMouseEvent* event)
{
    if (!passPress(*event))
        QLineEdit::mousePressEvent(event);
}

void TextEntry::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (passPress(*event))
        return;
    QLineEdit::mouseDoubleClickEvent(event);
    // To Qt a number is several words.
    if (box_ && box_->canStep())
        selectAll();
}

void TextEntry::mouseMoveEvent(QMouseEvent* event)
{
    if (!passesMouse_) {
        QLineEdit::mouseMoveEvent(event);
        return;
    }
    // A window that opens meanwhile may take the release.
    passesMouse_ = event->buttons().testFlag(Qt::LeftButton);
    if (box_)
        box_->userEvent(passesMouse_ ? toEvent(*event) : Event::plain(EventCode::MouseCancel));
}

void TextEntry::mouseReleaseEvent(QMouseEvent* event)
{
    if (passesMouse_) {
        passesMouse_ = event->button() != Qt::LeftButton;
        if (box_)
            box_->userEvent(toEvent(*event));
        return;
    }
    QLineEdit::mouseReleaseEvent(event);
    // The first click picks up the whole value, as one types a new one more often than one mends it.
    if (selectOnRelease_ && !hasSelectedText())
        selectAll();
    selectOnRelease_ = false;
}

void TextEntry::contextMenuEvent(QContextMenuEvent* event)
{
    // A menu of the box's own goes before that of all entries.
    if (!box_ || !box_->openMenu(fromQt(event->pos())))
        QLineEdit::contextMenuEvent(event);
}

} // namespace workbench
