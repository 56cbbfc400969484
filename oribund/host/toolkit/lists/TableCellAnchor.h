#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/IdStamp.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/XY.h"
#include "oribund/host/toolkit/lists/TableLayout.h"

#include <vector>

namespace oribund
{

class iTableAdaptor;
struct TableColumn;

/** Finds a cell again when rows and columns have come and gone: by the names of both or, without, by their numbers. */
class ORIBUND_API TableCellAnchor
{
public:
    TableCellAnchor() = default;

    /** Of a cell that exists. */
    TableCellAnchor(const XY<int>& cell, const std::vector<TableColumn>& columns, const iTableAdaptor& adaptor);

    /** Where it was when it was found last; kNoCell for none. */
    const XY<int>& cell() const { return cell_; }

    bool isSet() const { return cell_ != TableLayout::kNoCell; }

    /** Looks it up among what there is now; false, and none from then on, when it is gone. */
    bool find(const std::vector<TableColumn>& columns, const iTableAdaptor& adaptor);

private:
    int findRow(const iTableAdaptor& adaptor) const;

    XY<int> cell_ = TableLayout::kNoCell;
    String column_;
    IdStamp row_;
};

} // namespace oribund
