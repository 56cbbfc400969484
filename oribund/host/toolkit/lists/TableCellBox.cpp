#include "oribund/host/toolkit/lists/TableCellBox.h"

#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/lists/TableEdit.h"

namespace oribund
{

TableCellBox::TableCellBox(const InitArgs& args, TableEdit& edit)
    : TextBox(args)
    , edit_(edit)
{
}

bool TableCellBox::handleCommit(const WString& text)
{
    return edit_.store(*this, text);
}

bool TableCellBox::usesKey(const Event& press) const
{
    return edit_.usesKey(press) || TextBox::usesKey(press);
}

bool TableCellBox::handleKeyEvent(const Event& event)
{
    const GlobRef<TableCellBox> self(this);
    if (event.code == EventCode::KeyPress && edit_.userKey(event))
        return true;
    return self && TextBox::handleKeyEvent(event);
}

void TableCellBox::handleFocusEvent(bool gained)
{
    const GlobRef<TableCellBox> self(this);
    TextBox::handleFocusEvent(gained);
    if (!gained && self)
        edit_.leave(*this);
}

} // namespace oribund
