#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/toolkit/values/ValControl.h"
#include "oribund/host/toolkit/widgets/Checkbox.h"

namespace oribund
{

/**
 * A check box that edits a truth value through an adaptor. It asks for the edit when it is toggled and when it is sent
 * its own message; asking twice for the same makes one edit.
 */
class ORIBUND_API ValCheckbox : public ValControl<Checkbox, bool>
{
public:
    explicit ValCheckbox(const InitArgs& args);
    ~ValCheckbox() override;

    void setWidgetValue(const bool& value, eRedrawFlag flag) override;
    bool getWidgetValue() const override;

protected:
    void handleToggle() override;
    bool handleMessageEvent(const String& message, Glob* sender) override;

private:
    void write();
};

} // namespace oribund
