#include "oribund/panels/EffectTitleBar.h"

#include "oribund/host/base/UIString.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/effects/EffectInstance.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/toolkit/layout/WidgetGroupEx.h"
#include "oribund/host/toolkit/menus/SettingsButton.h"
#include "oribund/host/toolkit/widgets/Checkbox.h"
#include "oribund/panels/FXPanelCreationOptions.h"

#include <memory>

namespace oribund
{

namespace
{
/** Between the LED and the button at its left. */
constexpr int kTitleWidgetGap = 2;
} // namespace

void EffectTitleBar::make(WidgetGroupEx& panel, unsigned flags)
{
    if (flags & FXPanelCreationOptions::kEnableLed)
        makeLed(panel);
    if (flags & FXPanelCreationOptions::kSettingsButton)
        makeSettingsButton(panel);
}

void EffectTitleBar::makeLed(WidgetGroupEx& panel)
{
    Checkbox::InitArgs args;
    args.width = static_cast<unsigned short>(Checkbox::calcWidth({}));
    args.height = static_cast<unsigned short>(UifStd::getControlHeight());
    args.canvas = panel.canvas();
    args.id = "enable_led";
    led_ = panel.addTitleWidget(std::make_unique<Checkbox>(args), 0);
    led_->setTellsModifiers(true);
}

void EffectTitleBar::makeSettingsButton(WidgetGroupEx& panel)
{
    SettingsButton::InitArgs args;
    args.palette = panel.makeTitleAreaPalette();
    args.canvas = panel.canvas();
    args.id = "settings";
    const int fromRight = led_ ? led_->getWidth() + kTitleWidgetGap : 0;
    settings_ = panel.addTitleWidget(std::make_unique<SettingsButton>(args, panel), fromRight);
}

void EffectTitleBar::nameAfter(const WString& effect)
{
    const auto name = [&effect](Glob& widget, int text) {
        const UIString shown = UIString(text).withPlaceholder(L"EFFECT", effect);
        widget.setTooltip(shown);
        widget.setAccessibleName(shown);
    };
    if (led_)
        name(*led_, TextIds::kSwitchEffect);
    if (settings_)
        name(*settings_, TextIds::kEffectSettings);
}

void EffectTitleBar::updateBypassButton(const EffectInstance& effect, bool editable, eRedrawFlag redrawFlag)
{
    if (!led_)
        return;
    led_->setChecked(effect.isEnabled(), redrawFlag);
    led_->setVisible(effect.hasComponentControls(), redrawFlag);
    led_->setEnabled(editable, redrawFlag);
}

void EffectTitleBar::updateSettingsButton(const EffectInstance& effect, eRedrawFlag redrawFlag)
{
    if (settings_)
        settings_->setVisible(effect.hasComponentControls(), redrawFlag);
}

} // namespace oribund
