#include "skin/TextEditor.h"

#include "skin/EventTranslation.h"
#include "skin/PanelSurface.h"
#include "skin/QtConversions.h"

#include "oribund/host/toolkit/entries/TextBox.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QScopedValueRollback>
#include <QSignalBlocker>

#include <algorithm>
#include <utility>

namespace oribund::qt
{

using oribund::TextBox;

namespace
{

/** What the box leaves free beside the text more than Qt does, which keeps room for a caret on the right. */
QMargins marginsFor(oribund::TextAlign align)
{
    switch (align) {
    case oribund::TextAlign::Centre:
        return {1, 0, 0, 0};
    case oribund::TextAlign::Right:
        return {1, 0, -1, 0};
    case oribund::TextAlign::Left:
        break;
    }
    return {1, 0, 1, 0};
}

Qt::Alignment alignmentOf(oribund::TextAlign align)
{
    switch (align) {
    case oribund::TextAlign::Centre:
        return Qt::AlignHCenter | Qt::AlignVCenter;
    case oribund::TextAlign::Right:
        return Qt::AlignRight | Qt::AlignVCenter;
    case oribund::TextAlign::Left:
        break;
    }
    return Qt::AlignLeft | Qt::AlignVCenter;
}

/** What of a glob is to be seen, on the canvas. */
oribund::Kt::Box<int> visiblePartOf(const oribund::Glob& glob, oribund::Kt::Box<int> box)
{
    for (const oribund::Glob* around = &glob; around; around = around->parent())
        box = box.intersect(oribund::Kt::Box<int>::fromSize(around->toCanvas({}), around->getSize()));
    return box;
}

} // namespace

TextEditor::TextEditor(TextBox& box, PanelSurface& surface)
    : QLineEdit(&surface)
    , box_(&box)
    , surface_(surface)
{
    setFocusPolicy(Qt::ClickFocus); // Tab follows the panel's order
    setFrame(false);
    refresh();
    follow();
    selectAll();
    connect(this, &QLineEdit::textEdited, [this](const QString& text) {
        const QScopedValueRollback<bool> guard(telling_, true);
        if (box_)
            box_->userEdit(fromQt(text));
    });
}

void TextEditor::refresh()
{
    QPalette colours = toQt(box_->getPalette());
    if (box_->isReadOnly())
        colours.setColor(QPalette::Base, toQt(box_->getPalette().window()));
    setPalette(colours);
    setFont(toQt(box_->font()));
    setReadOnly(box_->isReadOnly());
    setAlignment(alignmentOf(box_->getAlignment()));
    setTextMargins(marginsFor(box_->getAlignment()));
    setPlaceholderText(toQt(box_->getPlaceholder()));
    setAccessibleName(toDisplay(box_->accessibleName()));
    setAccessibleDescription(toQt(box_->getProblem()));
    // A press that may become a drag is the box's.
    setAttribute(Qt::WA_TransparentForMouseEvents, box_->ownsPress());
    refreshText();
}

void TextEditor::refreshText()
{
    // The box counts in its own characters; it cuts off what Qt lets through. Setting it moves the caret.
    const int longest = static_cast<int>(std::min<std::size_t>(box_->getMaxLength(), 32767));
    if (maxLength() != longest)
        setMaxLength(longest);
    const QString shown = toQt(box_->getShownText());
    // What was entered is not to be taken back here; what is only like the value meanwhile is still being typed.
    if (text() == shown && (box_->isEditing() || !isUndoAvailable()))
        return;
    const bool modified = box_->isModified();
    if (modified && !telling_) {
        // Typed without the editor, as the key that opens a cell: it can be taken back as well.
        const QSignalBlocker quiet(this);
        selectAll();
        insert(shown);
        return;
    }
    const int caret = cursorPosition();
    setText(shown);
    // What is being typed was only cleaned up; a value that comes meanwhile, or was entered, is typed over.
    if (modified)
        setCursorPosition(caret);
    else
        selectAll();
}

bool TextEditor::follow()
{
    if (!box_ || !box_->hasFocus())
        return false;
    const auto place =
        oribund::Kt::Box<int>::fromSize(box_->toCanvas(box_->editorBox().topLeft()), box_->editorBox().size());
    const QRect whole = toQt(place);
    const QRect visible = toQt(visiblePartOf(*box_, place));
    setGeometry(visible.isEmpty() ? whole.translated(-whole.right() - 1, 0) : whole);
    if (visible == whole || visible.isEmpty())
        clearMask();
    else
        setMask(visible.translated(-whole.topLeft()));
    return true;
}

bool TextEditor::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = static_cast<QKeyEvent&>(*event);
        // With nothing typed, undo is that of the window.
        const bool idle = (key.matches(QKeySequence::Undo) && !isUndoAvailable()) ||
                          (key.matches(QKeySequence::Redo) && !isRedoAvailable());
        const bool kept = box_ && box_->keepsUndo();
        if ((idle && !kept) || !TextBox::worksOnText(toEvent(key)))
            return false;
    }
    return QLineEdit::event(event);
}

// Keys: those that mean something to the box rather than to the text go on to the surface.

void TextEditor::keyPressEvent(QKeyEvent* event)
{
    if (TextBox::worksOnText(toEvent(*event)))
        QLineEdit::keyPressEvent(event);
    else
        event->ignore();
}

bool TextEditor::focusNextPrevChild(bool)
{
    return false;
}

void TextEditor::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    if (event->reason() != Qt::PopupFocusReason)
        selectAll();
}

void TextEditor::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    surface_.keyboardLeft(event->reason());
}

// The mouse

void TextEditor::mousePressEvent(QMouseEvent* event)
{
    // The press that has brought the keyboard comes from the surface.
    selectOnRelease_ = !event->spontaneous() && box_ && !box_->isEditing();
    QLineEdit::mousePressEvent(event);
}

void TextEditor::mouseDoubleClickEvent(QMouseEvent* event)
{
    QLineEdit::mouseDoubleClickEvent(event);
    // To Qt a number is several words.
    if (box_ && box_->canStep())
        selectAll();
}

void TextEditor::mouseReleaseEvent(QMouseEvent* event)
{
    QLineEdit::mouseReleaseEvent(event);
    // The first click picks up the whole value, as one types a new one more often than one mends it.
    if (std::exchange(selectOnRelease_, false) && !hasSelectedText())
        selectAll();
}

void TextEditor::contextMenuEvent(QContextMenuEvent* event)
{
    // A menu of the box's own goes before that of all entries.
    if (box_ && !box_->openMenu(box_->fromCanvas(fromQt(mapToParent(event->pos())))))
        openTextMenu(event->globalPos());
}

void TextEditor::openTextMenu(const QPoint& at)
{
    QMenu* const menu = createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(at);
}

} // namespace oribund::qt
