#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/toolkit/core/Control.h"

namespace oribund
{

template <class Widget>
class KeyTable;

/** A button that drops down the menu of the panel that it stands on: what a right click on that panel shows as well. */

class ORIBUND_API SettingsButton final : public Control
{
public:
    using InitArgs = GlobCreationInfo;

    /** `owner` has the menu, and owns the button. Dimensions of 0 are the natural ones. */
    SettingsButton(const InitArgs& args, MenuGlob& owner);

    /** The name of the icon that it shows. */
    static const char* getIconFile();

    static XY<int> calcNaturalSize();

    /** The user wants to see the menu. */
    void userOpenMenu();

    UIString accessibleName() const override;
    bool usesKey(const Event& press) const override;
    void describe(AccessibleDescription& description) const override;
    bool accessibleActivate(int part = kWhole) override;
    void draw(CanvasRenderer& renderer) override;

protected:
    bool handleMouseEvent(const Event& event) override;
    bool handleKeyEvent(const Event& event) override;

private:
    static const KeyTable<SettingsButton>& keys();

    MenuGlob& owner_;
};

} // namespace oribund
