#include "oribund/host/toolkit/layout/TitleBox.h"

#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/layout/WidgetGroupEx.h"

namespace oribund
{

namespace
{

bool endsBox(const Event& press)
{
    return press.isPlainKeyPress() && (press.key == Key::Enter || press.key == Key::Escape);
}

} // namespace

TitleBox::TitleBox(const InitArgs& args, WidgetGroupEx& group)
    : TextBox(args)
    , group_(group)
{
}

bool TitleBox::handleCommit(const WString& text)
{
    return group_.userSetTitle(text);
}

bool TitleBox::usesKey(const Event& press) const
{
    return endsBox(press) || TextBox::usesKey(press);
}

bool TitleBox::handleKeyEvent(const Event& event)
{
    const bool ends = endsBox(event);
    GlobRef<TitleBox> self(this);
    const bool taken = TextBox::handleKeyEvent(event);
    if (!ends || !self)
        return taken;
    // The keyboard goes back to the title or, where that does not take it, to nobody; either ends the box.
    if (!group_.takeFocus() && self)
        dropFocus();
    return true;
}

void TitleBox::handleFocusEvent(bool gained)
{
    GlobRef<TitleBox> self(this);
    TextBox::handleFocusEvent(gained);
    if (!gained && self)
        delete this;
}

} // namespace oribund
