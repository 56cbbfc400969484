#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/toolkit/entries/TextBox.h"

namespace oribund
{

class TableEdit;

/** The entry in which a cell of a table is edited in place. The table ends it; so does the loss of the keyboard. */
class ORIBUND_API TableCellBox final : public TextBox
{
public:
    /** `edit` outlives the box. */
    TableCellBox(const InitArgs& args, TableEdit& edit);

    /** Always: a command of the window would change what lies behind the open cell. */
    bool keepsUndo() const override { return true; }

    bool usesKey(const Event& press) const override;

protected:
    bool handleCommit(const WString& text) override;
    bool handleKeyEvent(const Event& event) override;
    void handleFocusEvent(bool gained) override;

private:
    TableEdit& edit_;
};

} // namespace oribund
