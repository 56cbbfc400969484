#pragma once

#include "oribund/host/base/LightweightString.h"
#include "oribund/host/toolkit/core/eRedrawFlag.h"

namespace oribund
{

class Checkbox;
class EffectInstance;
class SettingsButton;
class WidgetGroupEx;

/**
 * The widgets in the title row of an effect's panel: the LED that switches the effect on and off, and the button of the
 * panel's menu. The panel owns them; where its flags ask for neither, all this does nothing.
 */
class EffectTitleBar
{
public:
    /** Makes what the flags (FXPanelCreationOptions::Flag) ask for. The panel outlives this. */
    void make(WidgetGroupEx& panel, unsigned flags);

    /** Null for none, as is the button. */
    Checkbox* led() const { return led_; }

    SettingsButton* settingsButton() const { return settings_; }

    /** Names the widgets after the effect, for tooltips and screen readers. */
    void nameAfter(const WString& effect);

    void updateBypassButton(const EffectInstance& effect, bool editable, eRedrawFlag redrawFlag);
    void updateSettingsButton(const EffectInstance& effect, eRedrawFlag redrawFlag);

private:
    void makeLed(WidgetGroupEx& panel);
    void makeSettingsButton(WidgetGroupEx& panel);

    Checkbox* led_ = nullptr;
    SettingsButton* settings_ = nullptr;
};

} // namespace oribund
