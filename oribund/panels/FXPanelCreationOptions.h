#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/edit/monitor/FXViewHandle.h"
#include "oribund/host/toolkit/layout/MinimizableGroup.h"

namespace oribund
{

class TabOrderManager;

/** What an effect component panel is made from: which effect, how wide, where, and which parts its title bar has. */
class ORIBUND_API FXPanelCreationOptions : public MinimizableGroup::InitArgs
{
public:
    /** Bits of `flags`. The settings button, minimising and the LED need the title bar. */
    enum Flag : unsigned int {
        kSettingsButton = 0x001,   ///< the title area has the component's menu
        kTitleBar = 0x002,         ///< there is a title bar
        kMinimisable = 0x004,      ///< a click on the title folds the panel
        kGroupTitleColour = 0x008, ///< the title has the colour of group titles, and follows the panel's active state
        kEnableLed = 0x010,        ///< the title bar has the check box that switches the effect on and off
        kResizable = 0x020,        ///< folding is allowed from the start
        kBuilderFlag40 = 0x040,    ///< for builders' own use
        kBuilderFlag80 = 0x080,    ///< for builders' own use
        kDrawBorder = 0x100,       ///< the panel draws its frame line
    };

    static constexpr unsigned int kDefaultFlags = 0x1F7;   ///< all but kGroupTitleColour
    static constexpr unsigned int kMaskPanelFlags = 0x13A; ///< the panel of an effect's mask

    /** The group is titled with the effect's name, if the handle yields an effect. */
    FXPanelCreationOptions(const FXViewHandle& handle, unsigned short width, Canvas* canvas, unsigned int flags);

    /** With kDefaultFlags. The handle is the one that the viewer's effect monitor holds for the effect. */
    FXPanelCreationOptions(Vob* vob, const Kt::Ptr<EffectInstance>& effect, unsigned short width, Canvas* canvas);

    /** No frame, and a widget gap free below the contents; the same whatever the argument. */
    static Border border(unsigned int flags);

    /** Points the handle at another effect of the FXVob; where it then yields one, that one's name is the title. */
    void setViewEffectID(const IdStamp& effectId);

    FXViewHandle viewHandle;
    /** The tab order that the panel's controls are to join; not owned, null for none. */
    TabOrderManager* tabOrderManager = nullptr;
    unsigned int flags = 0;

private:
    void init(const Kt::Ptr<EffectInstance>& effect);
};

} // namespace oribund
