#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/toolkit/menus/DropDownMenuButton.h"
#include "oribund/host/toolkit/values/ValControl.h"

namespace oribund
{

/** A drop-down menu that edits the number of the selected item through an adaptor. */
class ORIBUND_API ValMenuButton : public ValControl<DropDownMenuButton, unsigned>
{
public:
    explicit ValMenuButton(const InitArgs& args);
    ~ValMenuButton() override;

    void setWidgetValue(const unsigned& value, eRedrawFlag flag) override;
    unsigned getWidgetValue() const override;

protected:
    bool handleChoice(unsigned index) override;
};

} // namespace oribund
