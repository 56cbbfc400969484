#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/notify/MethodCallback.h"
#include "oribund/host/toolkit/core/Control.h"
#include "oribund/host/toolkit/lists/TableCellAnchor.h"
#include "oribund/host/toolkit/lists/TableEdit.h"
#include "oribund/host/toolkit/lists/TableLayout.h"
#include "oribund/host/toolkit/lists/iTableAdaptor.h"
#include "oribund/host/toolkit/scroll/ScrollBar.h"

#include <memory>
#include <vector>

namespace oribund
{

class TableColumnDrag;
enum class Key;
class TableWidget;

/** The user has gone to another cell. */
struct TableEvent {
    /** Valid when the call begins. */
    TableWidget* table = nullptr;
    XY<int> cell; ///< (column, row)
};

/**
 * A table whose contents come from an adaptor, of which it reads what is in view.
 *
 * One cell is the current one; the arrow keys, Page Up and Down, Home and End (first and last row) move it. Enter, F2,
 * a double click or typing opens an entry in it, or in the next editable cell of its row. There Enter stores and goes
 * down (with Shift up), Tab stores and goes on to the next editable cell, Escape gives up, and the loss of the keyboard
 * stores. A text that the adaptor does not take stays in the entry after Enter and Tab, to be mended.
 */
class ORIBUND_API TableWidget : public Control
{
public:
    /** What is marked of the row with the current cell, and whether Left and Right mean something. */
    enum class Selects { Cells, Rows };

    static constexpr int kPadding = 6;

    struct InitArgs : GlobCreationInfo {
        using GlobCreationInfo::GlobCreationInfo;

        Selects selects = Selects::Cells;
        bool headerShown = true;
        /** Shown while there are no rows. */
        UIString emptyText;
    };

    explicit TableWidget(const InitArgs& args);
    ~TableWidget() override;

    /** Not owned; may go before the table, which is empty then. Null for none. */
    void setAdaptor(iTableAdaptor* adaptor);

    iTableAdaptor* getAdaptor() const { return adaptor_; }

    /** Reads everything again. Selection and edit stay with their cells; an edit whose cell is gone, or is not to be
        edited any more, is dropped. */
    virtual void refresh();

    const TableLayout& layout() const { return layout_; }

    const std::vector<TableColumn>& getColumns() const { return columns_; }

    WString getTitle(int column) const;

    const WString& getEmptyText() const { return emptyText_; }

    Selects selects() const { return selects_; }

    /** Empty for a cell that there is not. */
    TableCell getCell(const XY<int>& cell) const;

    bool isEditable(const XY<int>& cell) const;

    /** The cell itself or, where that is not editable, the next in its row that is; kNoCell for none. */
    XY<int> editableCellNear(const XY<int>& cell) const;

    /** Whether there are rows to show. */
    bool showsCells() const;

    /** Whether it or its entry has the keyboard. */
    bool hasKeyboard() const;

    const XY<int>& getCurrentCell() const { return current_.cell(); }

    /** Goes to a cell and brings it into view; to none with one that there is not. Does not tell selections(). */
    void setCurrentCell(const XY<int>& cell);

    Notifier<TableEvent>& selections() { return selections_; }

    TableEdit& edit() { return edit_; }

    const TableEdit& edit() const { return edit_; }

    /** What tells one who does not see it which cell this is: the column's title and the row's first text. */
    WString describe(const XY<int>& cell) const;

    // What the user does

    void userSelect(const XY<int>& cell);
    void userScroll(int offset);
    void userResizeColumn(int column, int width);
    /** A whole text for a cell, as from an assistive tool. */
    bool userStore(const WString& text, const XY<int>& cell);

    using Glob::resize;
    void resize(double width, double height) override;
    MouseCursor contextCursor(const XY<int>& local) const override;
    UIString tooltip() const override;
    bool usesKey(const Event& press) const override;
    void describe(AccessibleDescription& description) const override;
    int accessiblePartCount() const override;
    void describePart(int part, AccessibleDescription& description) const override;
    int accessiblePartAt(const XY<int>& local) const override;
    int currentAccessiblePart() const override;
    bool accessibleActivate(int part = kWhole) override;
    bool accessibleSetText(const WString& text, int part = kWhole) override;
    void draw(CanvasRenderer& renderer) override;

protected:
    bool handleMouseEvent(const Event& event) override;
    bool handleKeyEvent(const Event& event) override;
    void handleFocusEvent(bool gained) override;

private:
    friend class TableEdit;

    int titleCount() const;
    int partOf(const XY<int>& cell) const;
    XY<int> cellOf(int part) const;
    int handleAdaptorEvent(const TableAdaptorEvent& event);
    void readAdaptor();
    void revealRow(int row);
    void placeBar();
    int handleBar(const ScrollBarEvent& event);
    bool pressed(const Event& event);
    bool dragged(const Event& event);
    bool turned(const Event& event);
    bool moves(Key key) const;
    bool move(Key key);
    bool beginsEdit(const Event& press) const;
    void beginEditBy(const Event& event);

    iTableAdaptor* adaptor_ = nullptr;
    TableLayout layout_;
    std::vector<TableColumn> columns_;
    WString emptyText_;
    Selects selects_;
    bool headerShown_;
    TableCellAnchor current_;
    TableEdit edit_{*this};
    ScrollBar* bar_ = nullptr;
    std::unique_ptr<TableColumnDrag> drag_;
    XY<int> pointer_; ///< where it was last, for the tooltip
    Notifier<TableEvent> selections_;
    MethodCallback<TableWidget, ScrollBarEvent> barCallback_{this, &TableWidget::handleBar};
    MethodCallback<TableWidget, TableAdaptorEvent> adaptorCallback_{this, &TableWidget::handleAdaptorEvent};
};

} // namespace oribund
