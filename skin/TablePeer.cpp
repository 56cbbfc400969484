#include "skin/TablePeer.h"

#include "skin/QtConversions.h"
#include "skin/TableView.h"

#include "oribund/host/toolkit/lists/TableWidget.h"

namespace workbench
{

namespace Change = oribund::PeerChange;

TablePeer::TablePeer(oribund::TableWidget& table, QWidget& parent)
    : QtPeer(table, new TableView(table, parent))
    , table_(table)
{
}

TablePeer::~TablePeer()
{
    if (auto* view = static_cast<TableView*>(widget()))
        view->detach();
}

void TablePeer::refresh(unsigned changes)
{
    auto* view = static_cast<TableView*>(widget());
    if (!view)
        return;
    if (changes & Change::kPalette)
        view->showPalette(table_.getPalette());
    if (changes & Change::kFont)
        view->setFont(toQt(table_.font()));
    if (changes & (Change::kEnabled | Change::kVisible))
        view->setEnabled(table_.canInteract());
    QtPeer::refresh(changes);
    if (changes & (Change::kState | Change::kGeometry))
        view->refresh();
    if (changes & ~(Change::kTooltip | Change::kCursor))
        view->viewport()->update();
}

} // namespace workbench
