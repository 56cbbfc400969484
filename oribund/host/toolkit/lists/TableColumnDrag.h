#pragma once

namespace oribund
{

class TableWidget;

/** A drag of a column's right edge, from its press on. Ends by finish() or abort(), or with the table. */
class TableColumnDrag
{
public:
    /** `x` is where the press was. */
    TableColumnDrag(TableWidget& table, int column, int x);

    /** The pointer has moved. */
    void motion(int x);

    /** Gives the column the width that it had before the press. */
    void abort();

private:
    TableWidget& table_;
    int column_;
    int width_;
    int x_;
};

} // namespace oribund
