#include "oribund/host/toolkit/widgets/ClickControl.h"

#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/GlobChange.h"

namespace oribund
{

void ClickControl::setPressed(bool pressed, bool over)
{
    const bool looked = isHeldDown();
    pressed_ = pressed;
    over_ = over;
    if (looked != isHeldDown())
        changed(GlobChange::kContents);
}

bool ClickControl::handleMouseEvent(const Event& event)
{
    if (event.isPress(MouseButton::Left)) {
        if (canInteract())
            setPressed(true, true);
        return true;
    }
    if (pressed_ && event.code == EventCode::MouseMove) {
        setPressed(true, hitTest(event.position));
        return true;
    }
    if (pressed_ && event.code == EventCode::MouseCancel) {
        setPressed(false, false);
        return true;
    }
    if (pressed_ && event.code == EventCode::MouseRelease && event.button == MouseButton::Left) {
        setPressed(false, false);
        if (hitTest(event.position))
            event.modifiers == 0 ? userClick() : userModifiedClick(event.modifiers);
        return true;
    }
    return pressed_ || Control::handleMouseEvent(event);
}

void ClickControl::userModifiedClick(unsigned)
{
    userClick();
}

bool ClickControl::isClickKey(Key key) const
{
    return key == Key::Space || key == Key::Enter;
}

bool ClickControl::usesKey(const Event& press) const
{
    return (press.isPlainKeyPress() && isClickKey(press.key)) || Control::usesKey(press);
}

bool ClickControl::handleKeyEvent(const Event& event)
{
    if (!event.isPlainKeyPress() || !isClickKey(event.key))
        return Control::handleKeyEvent(event);
    if (!event.autoRepeat)
        userClick();
    return true;
}

bool ClickControl::accessibleActivate(int)
{
    userClick();
    return true;
}

} // namespace oribund
