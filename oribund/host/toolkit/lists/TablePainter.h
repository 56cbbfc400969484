#pragma once

#include "oribund/host/base/Box.h"
#include "oribund/host/base/Colour.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/base/XY.h"

namespace oribund
{

class CanvasRenderer;
class TableWidget;

/** Draws a table, whole or in parts for a native widget that scrolls by itself. Lives for one draw call. */
class ORIBUND_API TablePainter
{
public:
    TablePainter(const TableWidget& table, CanvasRenderer& renderer)
        : table_(table)
        , renderer_(renderer)
    {
    }

    /** The whole table, of its rows those in view. */
    void all();

private:
    void rows();
    /** One cell with its ground. */
    void cell(const XY<int>& cell, const Kt::Box<int>& box);
    /** What is said where there are no rows. */
    void emptyState(const Kt::Box<int>& box);
    void header();
    void headerCell(int column, const Kt::Box<int>& box);
    /** The lines below a box and, between columns, on its right. */
    void fillEdges(const Kt::Box<int>& box, bool right);
    bool isMarked(const XY<int>& cell) const;
    Colour ground(const XY<int>& cell) const;
    Colour lineColour() const;

    const TableWidget& table_;
    CanvasRenderer& renderer_;
};

} // namespace oribund
