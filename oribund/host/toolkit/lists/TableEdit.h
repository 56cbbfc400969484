#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/toolkit/core/GlobRef.h"
#include "oribund/host/toolkit/lists/TableCellAnchor.h"

namespace oribund
{

class Event;
class TableCellBox;
class TableWidget;

/**
 * Editing a cell of a table in place. A part of its table, which keeps it in step with rows, columns and scrolling.
 *
 * A text is stored in the cell that it was typed for or nowhere: when that cell is gone, or is not to be edited any
 * more, the edit is dropped. Whatever stores may destroy the table.
 */
class ORIBUND_API TableEdit
{
public:
    explicit TableEdit(TableWidget& table);

    /** Goes to the cell and opens the entry in it, its text selected. False when it cannot be edited now. */
    bool begin(const XY<int>& cell);

    bool isOpen() const { return static_cast<bool>(box_); }

    const XY<int>& cell() const { return cell_.cell(); }

    /** The open entry; null for none. */
    TableCellBox* box() const { return box_.get(); }

    /** Stores what stands in the entry and closes it. False, with the entry still open, when it is refused. */
    bool commit();

    /** Closes the entry and forgets what stands in it. */
    void cancel();

    /** Whether a press of a key in the entry means something to the table, and what it does then. */
    bool usesKey(const Event& press) const;
    bool userKey(const Event& event);

    /** The table has other contents. */
    void follow();

    /** The table has another size, or is scrolled: an edit out of view ends. */
    void place();

    // For the entry

    /** A text from the entry; false when it is refused. */
    bool store(const TableCellBox& box, const WString& text);
    /** The entry has lost the keyboard. */
    void leave(const TableCellBox& box);

private:
    void open(const XY<int>& cell);
    void close();
    void commitAndStep(int rows);
    void commitAndGoOn(bool forward);
    XY<int> nextEditable(XY<int> from, bool forward) const;

    TableWidget& table_;
    TableCellAnchor cell_;
    GlobRef<TableCellBox> box_;
};

} // namespace oribund
