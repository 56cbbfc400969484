#include "workbench/skin/TextBoxPeer.h"

#include "workbench/skin/EventTranslation.h"
#include "workbench/skin/PanelView.h"
#include "workbench/skin/QtConversions.h"

#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/TextBox.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QToolTip>
#include <QWheelEvent>

#include <algorithm>

namespace workbench
{

namespace Change = oribund::PeerChange;

namespace
{

/** The entry itself: what the user does goes to the box as long as there is one. */
class Entry final : public QLineEdit
{
public:
    Entry(oribund::TextBox& box, QWidget& parent)
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

    void detach() { box_ = nullptr; }

protected:
    bool event(QEvent* event) override
    {
        if (event->type() == QEvent::ToolTip && box_) {
            const QString tip = toDisplay(box_->tooltip());
            if (!tip.isEmpty())
                QToolTip::showText(static_cast<QHelpEvent&>(*event).globalPos(), tip.toHtmlEscaped(), this);
            return !tip.isEmpty();
        }
        if (event->type() == QEvent::ShortcutOverride && usesKey(static_cast<QKeyEvent&>(*event)))
            event->accept();
        return QLineEdit::event(event);
    }

    void keyPressEvent(QKeyEvent* event) override
    {
        const oribund::GlobRef<oribund::TextBox> box(box_);
        if (!box || !handleKey(*event)) {
            QLineEdit::keyPressEvent(event);
            return;
        }
        event->accept();
    }

    void wheelEvent(QWheelEvent* event) override
    {
        event->accept();
        if (hasFocus() && box_) {
            turned_ += toEvent(*event).wheel;
            const int steps = static_cast<int>(turned_);
            turned_ -= steps;
            if (steps == 0 || box_->userStep(steps))
                return;
        }
        if (PanelView* view = PanelView::around(this))
            view->scrollByWheel(*event);
    }

    void focusInEvent(QFocusEvent* event) override
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

    void focusOutEvent(QFocusEvent* event) override
    {
        QLineEdit::focusOutEvent(event);
        turned_ = 0.0;
        if (!box_ || event->reason() == Qt::PopupFocusReason)
            return;
        deselect();
        box_->userFocus(false);
    }

    void mouseReleaseEvent(QMouseEvent* event) override
    {
        QLineEdit::mouseReleaseEvent(event);
        // The first click picks up the whole value, as one types a new one more often than one mends it.
        if (selectOnRelease_ && !hasSelectedText())
            selectAll();
        selectOnRelease_ = false;
    }

    void contextMenuEvent(QContextMenuEvent* event) override
    {
        // A menu of the box's own goes before that of all entries.
        if (!box_ || !box_->openMenu(fromQt(event->pos())))
            QLineEdit::contextMenuEvent(event);
    }

    bool focusNextPrevChild(bool next) override
    {
        PanelView* view = PanelView::around(this);
        return box_ && view ? view->moveFocus(next) : QLineEdit::focusNextPrevChild(next);
    }

private:
    static bool usesKey(const QKeyEvent& event)
    {
        return event.key() == Qt::Key_Up || event.key() == Qt::Key_Down || event.key() == Qt::Key_Return ||
               event.key() == Qt::Key_Enter;
    }

    /** The keys that mean something to the box rather than to the text. */
    bool handleKey(const QKeyEvent& event)
    {
        const int step = event.modifiers().testFlag(Qt::ShiftModifier) ? 10 : 1;
        switch (event.key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            commit();
            return true;
        case Qt::Key_Escape:
            if (!box_->isModified())
                return false;
            box_->userCancel();
            selectAll();
            return true;
        case Qt::Key_Up:
            return box_->userStep(step);
        case Qt::Key_Down:
            return box_->userStep(-step);
        default:
            return false;
        }
    }

    void commit()
    {
        const oribund::GlobRef<oribund::TextBox> box(box_);
        box_->userCommit(fromQt(text()));
        if (box)
            selectAll();
    }

    oribund::TextBox* box_;
    double turned_ = 0.0;
    bool selectOnRelease_ = false;
};

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

} // namespace

TextBoxPeer::TextBoxPeer(oribund::TextBox& box, QWidget& parent)
    : QtPeer(box, new Entry(box, parent))
    , box_(box)
{
}

TextBoxPeer::~TextBoxPeer()
{
    if (auto* entry = static_cast<Entry*>(widget()))
        entry->detach();
}

QRect TextBoxPeer::widgetGeometry() const
{
    const QRect whole = QtPeer::widgetGeometry();
    const int height = std::min(whole.height(), oribund::UifStd::getControlHeight());
    return {whole.left(), whole.top() + (whole.height() - height) / 2, whole.width(), height};
}

void TextBoxPeer::refresh(unsigned changes)
{
    auto* entry = static_cast<Entry*>(widget());
    if (!entry)
        return;
    if (changes & Change::kPalette)
        entry->setPalette(toQt(box_.getPalette()));
    if (changes & Change::kFont)
        entry->setFont(toQt(box_.font()));
    if (changes & (Change::kEnabled | Change::kVisible))
        entry->setEnabled(box_.canInteract());
    if (changes & Change::kState)
        refreshState();
    QtPeer::refresh(changes);
}

void TextBoxPeer::refreshState()
{
    auto* entry = static_cast<Entry*>(widget());
    entry->setReadOnly(box_.isReadOnly());
    entry->setAlignment(alignmentOf(box_.getAlignment()));
    entry->setPlaceholderText(toQt(box_.getPlaceholder()));
    // The box counts in its own characters; it cuts off what Qt lets through.
    entry->setMaxLength(static_cast<int>(std::min<std::size_t>(box_.getMaxLength(), 32767)));
    const QString shown = toQt(box_.getShownText());
    if (entry->text() == shown)
        return;
    const int caret = entry->cursorPosition();
    entry->setText(shown);
    // What is being typed was only cleaned up; a value that comes while the entry has the keyboard is typed over.
    if (box_.isModified())
        entry->setCursorPosition(caret);
    else if (entry->hasFocus())
        entry->selectAll();
    else
        entry->setCursorPosition(0);
}

} // namespace workbench
