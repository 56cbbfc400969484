#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/toolkit/values/ValControl.h"
#include "oribund/host/toolkit/widgets/Button.h"

#include <memory>
#include <vector>

namespace oribund
{

/**
 * A button whose click goes to an adaptor, usually a ButtonAdaptor, and whose value is its text. A value can be given a
 * look of its own and is then not shown as text, for buttons that show a state by their icon.
 */
class ORIBUND_API ValButton : public ValControl<Button, String>
{
public:
    struct Look {
        String value;
        Image icon;
        int state = eOff;
        UIString tooltip;
    };

    using Looks = std::vector<Look>;

    explicit ValButton(const InitArgs& args);
    ~ValButton() override;

    /** What to show for `look.value` from now on, in place of an earlier look for it. */
    void addLook(const Look& look);

    /** Has these looks in place of all others; many buttons of one kind share them. */
    void shareLooks(const std::shared_ptr<const Looks>& looks);

    void setWidgetValue(const String& value, eRedrawFlag flag) override;
    String getWidgetValue() const override;

protected:
    void handleClick() override;

private:
    const Look* findLook(const String& value) const;
    void showLook(const Look& look, eRedrawFlag flag);
    void showText(const WString& text, eRedrawFlag flag);

    String value_;
    std::shared_ptr<const Looks> looks_; ///< null for none
};

} // namespace oribund
