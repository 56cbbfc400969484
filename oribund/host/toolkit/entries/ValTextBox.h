#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/toolkit/entries/TextBox.h"
#include "oribund/host/toolkit/values/ValControl.h"

namespace oribund
{

/** An entry that edits a value as text through an adaptor. After each entry it shows the value as the adaptor has it.
 */
class ORIBUND_API ValTextBox : public ValControl<TextBox, WString>
{
public:
    explicit ValTextBox(const InitArgs& args);
    ~ValTextBox() override;

    void setWidgetValue(const WString& value, eRedrawFlag flag) override;
    WString getWidgetValue() const override;

protected:
    bool handleCommit(const WString& text) override;
};

} // namespace oribund
