#pragma once

#include "skin/QtPeer.h"

namespace oribund
{
class TableWidget;
}

namespace workbench
{

/** A table as a QTableView, which brings scrolling, a header to drag, and rows and columns for assistive tools. */
class TablePeer final : public QtPeer
{
public:
    TablePeer(oribund::TableWidget& table, QWidget& parent);
    ~TablePeer() override;

    void refresh(unsigned changes) override;

private:
    oribund::TableWidget& table_;
};

} // namespace workbench
