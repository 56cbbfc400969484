#include "skin/TableView.h"

#include "skin/EventTranslation.h"
#include "skin/PanelView.h"
#include "skin/QPainterRenderer.h"
#include "skin/QtConversions.h"
#include "skin/QtPeer.h"
#include "skin/TableCellDelegate.h"
#include "skin/TableHeader.h"
#include "skin/TableModel.h"

#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/lists/TableCellBox.h"
#include "oribund/host/toolkit/lists/TablePainter.h"
#include "oribund/host/toolkit/lists/TableWidget.h"

#include <QCoreApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QToolTip>

namespace workbench
{

using oribund::Event;
using oribund::Key;
using oribund::TableWidget;

TableView::TableView(TableWidget& table, QWidget& parent)
    : QTableView(&parent)
    , table_(&table)
    , model_(new TableModel(table, this))
{
    setFocusPolicy(Qt::ClickFocus); // Tab follows the panel's order
    setTabKeyNavigation(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setSelectionBehavior(table.selects() == TableWidget::Selects::Rows ? SelectRows : SelectItems);
    setAutoScroll(false);
    setShowGrid(false);
    setWordWrap(false);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setMouseTracking(true);
    setHorizontalHeader(new TableHeader(table, this));
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(1);
    setItemDelegate(new TableCellDelegate(table, this));
    setModel(model_);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, [this](int offset) {
        if (table_ && !refreshing_)
            table_->userScroll(offset);
    });
    connect(horizontalHeader(), &QHeaderView::sectionResized, [this](int column, int, int width) {
        if (!table_ || refreshing_)
            return;
        table_->userResizeColumn(column, width);
        if (table_)
            refreshColumns(); // also when nothing came of it
    });
    connect(selectionModel(), &QItemSelectionModel::currentChanged, [this](const QModelIndex& to) {
        if (table_ && !refreshing_ && to.isValid())
            table_->userSelect({to.column(), to.row()});
    });
}

TableView::~TableView() = default;

void TableView::detach()
{
    // Qt may still ask for cells and titles until it deletes the view: there are none from now on.
    const QScopedValueRollback<bool> guard(refreshing_, true);
    table_ = nullptr;
    model_->detach();
}

void TableView::showPalette(const oribund::Palette& palette)
{
    setPalette(toQt(palette));
    // The frame that the table reckons with; the theme gives scroll areas none.
    const auto css = [](const oribund::Colour& colour) { return toQt(colour).name(); };
    setStyleSheet(QStringLiteral("QTableView { border: %1px solid %2; } QTableView:focus { border-color: %3; }")
                      .arg(oribund::TableLayout::kFrame)
                      .arg(css(palette.field().mix(palette.border(), 0.5)), css(palette.focus())));
}

void TableView::refresh()
{
    if (!table_ || refreshing_)
        return;
    const QScopedValueRollback<bool> guard(refreshing_, true);
    const oribund::TableLayout& layout = table_->layout();
    // Qt goes through all rows for it, even when it is the same again.
    if (verticalHeader()->defaultSectionSize() != layout.getRowHeight())
        verticalHeader()->setDefaultSectionSize(layout.getRowHeight());
    horizontalHeader()->setVisible(layout.getHeaderHeight() > 0);
    horizontalHeader()->setFixedHeight(layout.getHeaderHeight());
    setVerticalScrollBarPolicy(layout.scrollBarBox().empty() ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAlwaysOn);
    model_->refresh();
    refreshColumns();
    refreshCurrent();
    updateGeometries();
    verticalScrollBar()->setValue(layout.getScroll());
    if (QWidget* box = entry()) {
        box->installEventFilter(this);
        box->raise();
    }
}

void TableView::refreshColumns()
{
    const QScopedValueRollback<bool> guard(refreshing_, true);
    for (int column = 0; column < table_->layout().getNumColumns(); ++column) {
        const bool last = column == table_->layout().getNumColumns() - 1;
        horizontalHeader()->setSectionResizeMode(column, last ? QHeaderView::Fixed : QHeaderView::Interactive);
        horizontalHeader()->resizeSection(column, table_->layout().getColumnWidth(column));
    }
}

void TableView::refreshCurrent()
{
    const oribund::XY<int>& cell = table_->getCurrentCell();
    const QModelIndex index = model_->index(cell.y, cell.x);
    if (index == currentIndex())
        return;
    const auto rows = selectionBehavior() == SelectRows ? QItemSelectionModel::Rows : QItemSelectionModel::NoUpdate;
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | rows);
}

// Painting

void TableView::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    if (!table_ || table_->showsCells())
        return;
    QPainter painter(viewport());
    QPainterRenderer renderer(painter);
    oribund::TablePainter(*table_, renderer).emptyState(fromQt(viewport()->rect()));
}

// The pointer

bool TableView::viewportEvent(QEvent* event)
{
    if (event->type() != QEvent::ToolTip || !table_)
        return QTableView::viewportEvent(event);
    const QString tip = toDisplay(table_->tooltip());
    if (!tip.isEmpty())
        QToolTip::showText(static_cast<QHelpEvent&>(*event).globalPos(), tip.toHtmlEscaped(), this);
    return !tip.isEmpty();
}

void TableView::passMouse(const QMouseEvent& event)
{
    if (!table_)
        return;
    Event translated = toEvent(event);
    translated.position += fromQt(viewport()->pos());
    table_->userEvent(translated);
}

void TableView::mousePressEvent(QMouseEvent* event)
{
    passMouse(*event);
}

void TableView::mouseDoubleClickEvent(QMouseEvent* event)
{
    passMouse(*event);
}

void TableView::mouseMoveEvent(QMouseEvent* event)
{
    passMouse(*event);
}

void TableView::mouseReleaseEvent(QMouseEvent* event)
{
    passMouse(*event);
}

void TableView::wheelEvent(QWheelEvent* event)
{
    const int before = verticalScrollBar()->value();
    QTableView::wheelEvent(event);
    event->accept();
    PanelView* view = PanelView::around(this);
    if (verticalScrollBar()->value() == before && view)
        view->scrollByWheel(*event);
}

// The keyboard

bool TableView::event(QEvent* event)
{
    // A key that the table has a use for is not a command of the window.
    if (event->type() == QEvent::ShortcutOverride && table_ && claims(toEvent(static_cast<QKeyEvent&>(*event)))) {
        event->accept();
        return true;
    }
    return QTableView::event(event);
}

bool TableView::claims(const Event& key) const
{
    if (key.has(Event::kCtrl | Event::kAlt | Event::kMeta) || !table_->showsCells())
        return false;
    switch (key.key) {
    case Key::Up:
    case Key::Down:
    case Key::PageUp:
    case Key::PageDown:
    case Key::Home:
    case Key::End:
        return true;
    case Key::Left:
    case Key::Right:
        return table_->selects() == TableWidget::Selects::Cells;
    case Key::Character:
    case Key::Enter:
    case Key::F2:
        return table_->layout().isCell(table_->editableCellNear(table_->getCurrentCell()));
    default:
        return false;
    }
}

void TableView::keyPressEvent(QKeyEvent* event)
{
    if (!table_)
        return;
    const Event key = toEvent(*event);
    event->accept();
    // Typing goes to the entry itself, which knows about dead keys and carets.
    if (key.key == Key::Character && hasFocus() && claims(key) && beginTyping()) {
        passToEntry(*event);
        return;
    }
    // What the entry leaves over comes here too, and is not for the table.
    const bool taken = hasFocus() && key.key != Key::None && table_->userEvent(key);
    if (PanelView* view = taken ? nullptr : PanelView::around(this))
        view->passUnusedKey(*event);
}

void TableView::inputMethodEvent(QInputMethodEvent* event)
{
    const bool types = !event->commitString().isEmpty() || !event->preeditString().isEmpty();
    if (types && hasFocus() && beginTyping())
        passToEntry(*event);
    else
        event->ignore();
}

bool TableView::beginTyping()
{
    return table_ && table_->edit().begin(table_->editableCellNear(table_->getCurrentCell()));
}

QWidget* TableView::entry() const
{
    const oribund::TableCellBox* box = table_ ? table_->edit().box() : nullptr;
    return box ? QtPeer::widgetOf(*box) : nullptr;
}

void TableView::passToEntry(QEvent& event) const
{
    if (auto* line = dynamic_cast<QLineEdit*>(entry())) {
        line->selectAll();
        QCoreApplication::sendEvent(line, &event);
    }
}

bool TableView::eventFilter(QObject* watched, QEvent* event)
{
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (!isKey || !table_ || watched != entry())
        return QTableView::eventFilter(watched, event);
    const auto& key = static_cast<QKeyEvent&>(*event);
    if (event->type() == QEvent::KeyPress)
        return passEntryKey(key);
    if (key.key() != Qt::Key_Escape)
        return false;
    event->accept();
    return true;
}

bool TableView::passEntryKey(const QKeyEvent& event)
{
    Event key = toEvent(event);
    if (event.key() == Qt::Key_Backtab)
        key.modifiers |= Event::kShift;
    if (table_->edit().userKey(key))
        return true;
    if (key.key != Key::Tab)
        return false;
    // The entry is gone by now, so that it cannot pass the key on.
    focusNextPrevChild(!key.has(Event::kShift));
    return true;
}

void TableView::focusInEvent(QFocusEvent* event)
{
    PanelView* view = PanelView::around(this);
    if (view && table_ && event->reason() != Qt::MouseFocusReason)
        view->ensureWidgetVisible(this);
    if (table_)
        table_->userFocus(true);
    QTableView::focusInEvent(event);
}

void TableView::focusOutEvent(QFocusEvent* event)
{
    QTableView::focusOutEvent(event);
    if (table_ && event->reason() != Qt::PopupFocusReason)
        table_->userFocus(false);
}

bool TableView::focusNextPrevChild(bool next)
{
    PanelView* view = PanelView::around(this);
    return table_ && view ? view->moveFocus(next) : QTableView::focusNextPrevChild(next);
}

} // namespace workbench
