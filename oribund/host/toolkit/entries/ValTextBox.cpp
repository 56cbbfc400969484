#include "oribund/host/toolkit/entries/ValTextBox.h"

namespace oribund
{

ValTextBox::ValTextBox(const InitArgs& args)
    : ValControl(args)
{
}

ValTextBox::~ValTextBox() = default;

void ValTextBox::setWidgetValue(const WString& value, eRedrawFlag flag)
{
    setText(value, flag);
}

WString ValTextBox::getWidgetValue() const
{
    return getText();
}

bool ValTextBox::handleCommit(const WString& text)
{
    const GlobRef<ValTextBox> self(this);
    const bool accepted = requestDataChange(text, ChangeKind::Single);
    if (self)
        refreshFromData();
    return accepted;
}

} // namespace oribund
