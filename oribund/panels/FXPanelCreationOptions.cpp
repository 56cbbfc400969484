#include "oribund/panels/FXPanelCreationOptions.h"

#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/edit/Vob.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"
#include "oribund/host/effects/EffectInstance.h"

namespace oribund
{

namespace
{
FXViewHandle handleFor(Vob* vob, const Kt::Ptr<EffectInstance>& effect)
{
    CompoundEffectMonitor* const monitor = vob ? vob->getEffectMonitor() : nullptr;
    return monitor && effect ? FXViewHandle(monitor->getFXVob(effect)) : FXViewHandle();
}
} // namespace

FXPanelCreationOptions::FXPanelCreationOptions(const FXViewHandle& handle, unsigned short panelWidth,
                                               Canvas* panelCanvas, unsigned int panelFlags)
    : MinimizableGroup::InitArgs(panelWidth, 0, panelCanvas)
    , viewHandle(handle)
    , flags(panelFlags)
{
    init(viewHandle.getEffectPtr());
}

FXPanelCreationOptions::FXPanelCreationOptions(Vob* vob, const Kt::Ptr<EffectInstance>& effect,
                                               unsigned short panelWidth, Canvas* panelCanvas)
    : MinimizableGroup::InitArgs(panelWidth, 0, panelCanvas)
    , viewHandle(handleFor(vob, effect))
    , flags(kDefaultFlags)
{
    init(effect);
}

void FXPanelCreationOptions::init(const Kt::Ptr<EffectInstance>& effect)
{
    if (effect)
        title = UIString(effect->getName());
    minimisable = (flags & kMinimisable) != 0;
    GlobCreationInfo::border = border(flags);
}

Border FXPanelCreationOptions::border(unsigned int)
{
    Border border(Border::None, 0, Border::kAllSides);
    border.left = 0;
    border.top = 0;
    border.right = 0;
    border.bottom = UifStd::getWidgetGap();
    return border;
}

void FXPanelCreationOptions::setViewEffectID(const IdStamp& effectId)
{
    viewHandle.setViewEffectID(effectId);
    if (const Kt::Ptr<EffectInstance> effect = viewHandle.getEffectPtr())
        title = UIString(effect->getName());
}

} // namespace oribund
