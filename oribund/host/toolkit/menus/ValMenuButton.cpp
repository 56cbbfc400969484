#include "oribund/host/toolkit/menus/ValMenuButton.h"

namespace oribund
{

ValMenuButton::ValMenuButton(const InitArgs& args)
    : ValControl(args)
{
}

ValMenuButton::~ValMenuButton() = default;

void ValMenuButton::setWidgetValue(const unsigned& value, eRedrawFlag flag)
{
    setSelected(value, flag);
}

unsigned ValMenuButton::getWidgetValue() const
{
    return getSelected();
}

bool ValMenuButton::handleChoice(unsigned index)
{
    const GlobRef<ValMenuButton> self(this);
    const bool accepted = requestDataChange(index, ChangeKind::Single);
    if (self)
        refreshFromData();
    return accepted;
}

} // namespace oribund
