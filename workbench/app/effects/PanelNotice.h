#pragma once

#include "oribund/host/notify/MethodCallback.h"
#include "oribund/host/toolkit/layout/WidgetGroup.h"
#include "oribund/host/toolkit/widgets/Button.h"

#include <functional>

namespace oribund
{
class Label;
}

namespace workbench
{

/** A line of text with a button that does something about what it says. It takes no room until it is shown. */
class PanelNotice final : public oribund::WidgetGroup
{
public:
    explicit PanelNotice(const InitArgs& args);

    /** `description` is what a screen reader says of the button. */
    void show(const oribund::UIString& text, const oribund::UIString& button, const oribund::UIString& description,
              std::function<void()> act);

    bool hasKeyboard() const { return button_->hasFocus(); }

    void resize(double width, double height) override;
    using oribund::Glob::resize;

private:
    int handleClick(const oribund::ButtonEvent&);
    void placeWidgets();

    oribund::Label* text_ = nullptr;
    oribund::Button* button_ = nullptr; // made last
    std::function<void()> act_;
    oribund::MethodCallback<PanelNotice, oribund::ButtonEvent> click_;
};

} // namespace workbench
