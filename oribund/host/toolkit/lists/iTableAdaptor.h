#pragma once

#include "oribund/host/base/Box.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/base/IdStamp.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/UIString.h"
#include "oribund/host/base/XY.h"
#include "oribund/host/base/iVirtual.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/Palette.h"
#include "oribund/host/notify/Notifier.h"

#include <vector>

namespace oribund
{

/** A column of a table. Widths are logical pixels. */
struct TableColumn {
    /** Names the column: the width that the user gives it, and an edit in it, go where this goes. */
    String id;
    UIString title;
    int width = 0; ///< until the user changes it; 0 fits the title. The last column takes what the others leave.
    int minWidth = 0;
    bool editable = false;
    TextAlign align = TextAlign::Left;

    bool operator==(const TableColumn&) const = default;
};

/** What stands in one cell. */
struct TableCell {
    WString text;
    /** Whether the user may type another text here; only in a column that is editable. */
    bool editable = false;
    PaletteRole role = PaletteRole::FieldText;
};

/** What a table is told by its adaptor. */
struct TableAdaptorEvent {
    enum class Kind {
        Changed, ///< read everything again
        Gone,    ///< the adaptor is being destroyed
    };

    Kind kind = Kind::Changed;
};

/**
 * Where a table's contents come from. A cell is (column, row), both from 0; only cells that exist are asked for, and
 * only those in view, at every repaint: answers are to be quick. User-interface thread only.
 */
class ORIBUND_API iTableAdaptor : public iVirtual
{
public:
    iTableAdaptor();
    ~iTableAdaptor() override;

    iTableAdaptor(const iTableAdaptor&) = delete;
    iTableAdaptor& operator=(const iTableAdaptor&) = delete;

    virtual std::vector<TableColumn> getColumnDefinitions() const = 0;
    virtual int getNumRows() const = 0;
    virtual TableCell getCellData(const XY<int>& cell) const = 0;

    /** The user has entered a text. False, with nothing changed, when it is none for that cell. */
    virtual bool storeFieldText(const WString& text, const XY<int>& cell) = 0;

    /** Draws what is in a cell, on a ground that is there already; by default false: the text is to be drawn. */
    virtual bool drawField(CanvasRenderer& renderer, const XY<int>& cell, const Kt::Box<int>& box, const Colour& ink);

    /** Names what a row shows, so that selection and edit stay with it when rows come and go; by default they stay
        with the row's number. */
    virtual IdStamp getRowId(int row) const;

    virtual int getRowHeight() const;

    /** The size that the table is to have; by default nothing: it keeps its own. */
    virtual XY<int> getSize() const;

    /** Whether the contents are to be seen; while not, no cell is read. */
    virtual bool isVisible() const;

    /** For deriving classes to call when anything that they answer has become another. */
    void tableChanged();

    Notifier<TableAdaptorEvent>& tableEvents() { return events_; }

private:
    Notifier<TableAdaptorEvent> events_;
};

} // namespace oribund
