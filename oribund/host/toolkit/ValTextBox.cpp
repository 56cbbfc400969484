#include "oribund/host/toolkit/ValTextBox.h"

#include "oribund/host/base/Numeric.h"

namespace oribund
{

ValTextBox::ValTextBox(const InitArgs& args)
    : TextBox(args)
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

void ValTextBox::setWidgetEnabled(bool enabled)
{
    setEnabled(enabled);
}

bool ValTextBox::isWidgetEnabled() const
{
    return isEnabled();
}

bool ValTextBox::handleCommit(const WString& text)
{
    const GlobRef<ValTextBox> self(this);
    const bool accepted = requestDataChange(text, ChangeKind::Single);
    if (self)
        refreshFromData();
    return accepted;
}

bool ValTextBox::handleStep(int steps)
{
    if (numberStep_ == 0.0)
        return false;
    // What follows the number is its unit and stays.
    const std::wstring_view shown = getShownText().view();
    const std::size_t last = shown.find_last_of(L"0123456789.");
    const std::size_t end = last == std::wstring_view::npos ? 0 : last + 1;
    const std::optional<double> number = parseDouble(shown.substr(0, end));
    if (!number)
        return false;
    userCommit(reinterpretValType<WString>(*number + steps * numberStep_) + shown.substr(end));
    return true;
}

} // namespace oribund
