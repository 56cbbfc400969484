#include "oribund/host/toolkit/widgets/ValCheckbox.h"

namespace oribund
{

ValCheckbox::ValCheckbox(const InitArgs& args)
    : ValControl(args)
{
}

ValCheckbox::~ValCheckbox() = default;

void ValCheckbox::setWidgetValue(const bool& value, eRedrawFlag flag)
{
    setChecked(value, flag);
}

bool ValCheckbox::getWidgetValue() const
{
    return isChecked();
}

void ValCheckbox::handleToggle()
{
    const GlobRef<ValCheckbox> self(this);
    Checkbox::handleToggle();
    if (self)
        write();
}

bool ValCheckbox::handleMessageEvent(const String& message, Glob* sender)
{
    if (message != getMessage())
        return Checkbox::handleMessageEvent(message, sender);
    write();
    return true;
}

void ValCheckbox::write()
{
    const Kt::Ptr<ValAdaptorBase<bool>> adaptor = getDataAdaptor();
    if (!adaptor || adaptor->getDataValue() == isChecked())
        return;
    const GlobRef<ValCheckbox> self(this);
    const bool accepted = requestDataChange(isChecked(), ChangeKind::Single);
    if (self && !accepted)
        setChecked(adaptor->getDataValue());
}

} // namespace oribund
