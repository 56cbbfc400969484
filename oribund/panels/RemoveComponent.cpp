#include "oribund/panels/RemoveComponent.h"

#include "oribund/host/base/UIString.h"
#include "oribund/host/edit/EditGesture.h"
#include "oribund/host/edit/FXEditor.h"
#include "oribund/host/edit/Vob.h"
#include "oribund/host/edit/iTransitionsHost.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"
#include "oribund/host/effects/EffectInstance.h"
#include "oribund/host/services/TextIds.h"

namespace oribund
{

namespace
{
bool removeTransition(Vob& vob, const EffectInstance& effect)
{
    iTransitionsHost* const transitions = vob.transitionsHost();
    CompoundEffectMonitor* const monitor = vob.getEffectMonitor();
    return transitions && monitor &&
           transitions->removeVideoTransition(monitor->getTrackOf(effect.id()), vob.getCurrentTime());
}
} // namespace

bool removeComponent(Vob& vob, const Kt::Ptr<EffectInstance>& effect)
{
    FXEditor* const editor = vob.fxEditor();
    if (!effect || !editor || vob.isReadOnly())
        return false;
    const FXEditor::Node node = editor->findNode(*effect);
    if (node == FXEditor::Node::None)
        return false;
    if (vob.isPlaying())
        vob.stopPlay();
    const EditModifier modifier(vob.getEdit(),
                                UIString(TextIds::kRemoveStep).withPlaceholder(L"WHAT", effect->getName()));
    return node == FXEditor::Node::VideoTransition ? removeTransition(vob, *effect)
                                                   : editor->destroyNode(*effect) == FXEditor::RC::Done;
}

} // namespace oribund
