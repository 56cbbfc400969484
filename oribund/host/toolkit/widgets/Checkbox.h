#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/notify/Notifier.h"
#include "oribund/host/toolkit/widgets/CheckboxEvent.h"
#include "oribund/host/toolkit/widgets/ClickControl.h"

namespace oribund
{

/** A box that is checked or not, with a text beside it; a click anywhere on it toggles it. */
class ORIBUND_API Checkbox : public ClickControl
{
public:
    struct InitArgs : GlobCreationInfo {
        using GlobCreationInfo::GlobCreationInfo;

        UIString text;
        bool checked = false;
        /** The box's own message: see ValCheckbox. */
        String message = "toggled";
    };

    /** A width of 0 fits the text, a height of 0 is that of a row. */
    explicit Checkbox(const InitArgs& args);

    /** The width of a box with that text beside it. */
    static int calcWidth(const WString& text);
    static int calcWidth(const WString& text, const Glib::FontDesc& font);

    void setChecked(bool checked, eRedrawFlag redrawFlag = eRedrawFlag::Yes);

    bool isChecked() const { return checked_; }

    void setText(const UIString& text, eRedrawFlag redrawFlag = eRedrawFlag::Yes);

    const WString& getText() const { return text_; }

    const String& getMessage() const { return message_; }

    /** Whether a click with keys held is told as one, instead of toggling the box. Off by default. */
    void setTellsModifiers(bool tells) { tellsModifiers_ = tells; }

    /** Where the text begins, from the left edge. */
    static int textOffset();

    /** Tells of what the user does; not of setChecked(). */
    Notifier<CheckboxEvent>& events() { return events_; }

    /** The user has toggled it. */
    void userToggle();

    void userClick() override { userToggle(); }

    UIString accessibleName() const override;
    void describe(AccessibleDescription& description) const override;
    void draw(CanvasRenderer& renderer) override;

protected:
    /** After the user has toggled it; by default it tells events(). May destroy the box. */
    virtual void handleToggle();

    bool isClickKey(Key key) const override;
    void userModifiedClick(unsigned modifiers) override;

private:
    Kt::Box<int> markBox() const;

    WString text_;
    String message_;
    bool checked_;
    bool tellsModifiers_ = false;
    Notifier<CheckboxEvent> events_;
};

} // namespace oribund
