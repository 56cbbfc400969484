#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/toolkit/entries/TextBox.h"

namespace oribund
{

class WidgetGroupEx;

/** The entry in which the user gives a group another title. It goes when it loses the keyboard. */
class ORIBUND_API TitleBox final : public TextBox
{
public:
    /** `group` owns the box. */
    TitleBox(const InitArgs& args, WidgetGroupEx& group);

    bool usesKey(const Event& press) const override;

protected:
    bool handleCommit(const WString& text) override;
    bool handleKeyEvent(const Event& event) override;
    void handleFocusEvent(bool gained) override;

private:
    WidgetGroupEx& group_;
};

} // namespace oribund
