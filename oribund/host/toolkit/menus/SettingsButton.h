#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/toolkit/widgets/ClickControl.h"

namespace oribund
{

/** A button that drops down the menu of the panel that it stands on: what a right click on that panel shows as well. */
class ORIBUND_API SettingsButton final : public ClickControl
{
public:
    using InitArgs = GlobCreationInfo;

    /** `owner` has the menu, and owns the button. Dimensions of 0 are the natural ones. */
    SettingsButton(const InitArgs& args, MenuGlob& owner);

    /** The name of the icon that it shows. */
    static const char* getIconFile();

    static XY<int> calcNaturalSize();

    /** Opens the menu. */
    void userClick() override;

    UIString accessibleName() const override;
    void describe(AccessibleDescription& description) const override;
    void draw(CanvasRenderer& renderer) override;

private:
    MenuGlob& owner_;
};

} // namespace oribund
