#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/toolkit/core/Control.h"

namespace oribund
{

enum class Key;

/** A control that does one thing: at a click, which is a press that is let go over it, and at a key. */
class ORIBUND_API ClickControl : public Control
{
public:
    using Control::Control;

    /** The user has clicked it. */
    virtual void userClick() = 0;

    bool usesKey(const Event& press) const override;
    bool accessibleActivate(int part = kWhole) override;

protected:
    /** Whether it is held down: the button is, and the pointer is over it. */
    bool isHeldDown() const { return pressed_ && over_; }

    /** The user has clicked it with keys held (bits of Event::modifiers); by default a click as any. */
    virtual void userModifiedClick(unsigned modifiers);

    /** Space and Enter by default. */
    virtual bool isClickKey(Key key) const;

    bool handleMouseEvent(const Event& event) override;
    bool handleKeyEvent(const Event& event) override;

private:
    void setPressed(bool pressed, bool over);

    bool pressed_ = false;
    bool over_ = false;
};

} // namespace oribund
