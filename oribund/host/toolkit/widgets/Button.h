#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/canvas/Image.h"
#include "oribund/host/notify/Notifier.h"
#include "oribund/host/toolkit/core/Control.h"

namespace oribund
{

class Button;

/** A click on a button. The button is valid when the call begins. */
struct ButtonEvent {
    Button* button = nullptr;
};

/** A push button with a text, an icon, or both. */
class ORIBUND_API Button : public Control
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
    bool isPressed() const { return pressed_ && over_; }

    Notifier<ButtonEvent>& clicks() { return clicks_; }

    /** The size of a framed button for a text. */
    static XY<int> calcSizeFor(const WString& text, const Glib::FontDesc& font);
    static XY<int> calcSizeFor(const WString& text);

    /** The user has clicked it. */
    void userClick();

    UIString accessibleName() const override;
    bool usesKey(const Event& press) const override;
    void describe(AccessibleDescription& description) const override;
    bool accessibleActivate(int part = kWhole) override;
    void draw(CanvasRenderer& renderer) override;

protected:
    /** What a click does; as it stands it tells clicks() and then sends the message. May destroy the button. */
    virtual void handleClick();

    bool handleMouseEvent(const Event& event) override;
    bool handleKeyEvent(const Event& event) override;

private:
    void setPressed(bool pressed, bool over);
    void drawContents(CanvasRenderer& renderer, const Colour& colour);

    WString text_;
    Image icon_;
    String message_;
    Style style_;
    int state_ = eOff;
    bool checkable_;
    bool pressed_ = false;
    bool over_ = false;
    Notifier<ButtonEvent> clicks_;
};

} // namespace oribund
