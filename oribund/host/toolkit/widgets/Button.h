#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/canvas/Image.h"
#include "oribund/host/notify/Notifier.h"
#include "oribund/host/toolkit/widgets/ClickControl.h"

namespace oribund
{

class Button;

/** A click on a button. The button is valid when the call begins. */
struct ButtonEvent {
    Button* button = nullptr;
};

/** A push button with a text, an icon, or both. */
class ORIBUND_API Button : public ClickControl
{
public:
    enum class Style {
        Framed,
        Flat, ///< without a ground of its own until the pointer is over it
    };

    /** What it shows besides being pressed; what the states mean is for the button's user to say. */
    enum State : int { eOff = 0, eOn = 1, eMixed = 2 };

    struct InitArgs : GlobCreationInfo {
        using GlobCreationInfo::GlobCreationInfo;

        UIString text;
        Image icon;
        /** Sent to the button and its parents at each click; empty for none. */
        String message;
        Style style = Style::Framed;
        /** Whether a click switches between off and on by itself. */
        bool checkable = false;
    };

    explicit Button(const InitArgs& args);

    void setText(const UIString& text, eRedrawFlag redrawFlag = eRedrawFlag::Yes);

    const WString& getText() const { return text_; }

    void setIcon(const Image& icon, eRedrawFlag redrawFlag = eRedrawFlag::Yes);

    const Image& getIcon() const { return icon_; }

    /** One of State; other numbers count as off. */
    void setState(int state, eRedrawFlag redrawFlag = eRedrawFlag::Yes);

    int getState() const { return state_; }

    bool isCheckable() const { return checkable_; }

    Style getStyle() const { return style_; }

    const String& getMessage() const { return message_; }

    void setMessage(const String& message) { message_ = message; }

    /** Whether it is held down. */
    bool isPressed() const { return isHeldDown(); }

    Notifier<ButtonEvent>& clicks() { return clicks_; }

    /** The size of a framed button for a text. */
    static XY<int> calcSizeFor(const WString& text, const Glib::FontDesc& font);
    static XY<int> calcSizeFor(const WString& text);

    void userClick() override;

    UIString accessibleName() const override;
    void describe(AccessibleDescription& description) const override;
    void draw(CanvasRenderer& renderer) override;

protected:
    /** What a click does; by default it tells clicks() and then sends the message. May destroy the button. */
    virtual void handleClick();

private:
    void drawContents(CanvasRenderer& renderer, const Colour& colour);

    WString text_;
    Image icon_;
    String message_;
    Style style_;
    int state_ = eOff;
    bool checkable_;
    Notifier<ButtonEvent> clicks_;
};

} // namespace oribund
