#include "workbench/app/window/DeleteKey.h"

#include "oribund/panels/RemoveComponent.h"
#include "workbench/app/effects/EffectsPanelPane.h"
#include "workbench/app/effects/KeyframeActions.h"
#include "workbench/app/session/Say.h"
#include "workbench/app/session/Workspace.h"
#include "workbench/app/timeline/TimelineStrip.h"

#include <QApplication>
#include <QEvent>

namespace workbench
{

namespace
{
void sayRefusal(const EditOutcome& outcome)
{
    if (!outcome)
        say(outcome.refused);
}
} // namespace

DeleteKey::DeleteKey(Workspace& workspace, TimelineStrip& strip, EffectsPanelPane& effects, KeyframeActions& keyframes)
    : workspace_(workspace)
    , strip_(strip)
    , effects_(effects)
    , keyframes_(keyframes)
    , selection_(this, &DeleteKey::handleSelection)
{
    selection_.attach(workspace_.selection().notifier());
    strip_.installEventFilter(this);
}

void DeleteKey::press()
{
    const QWidget* const keyboard = QApplication::focusWidget();
    const bool inPanels = keyboard && effects_.isAncestorOf(keyboard);
    if (const ObjectId effect = inPanels ? effects_.focusedTitle() : kNoObject; effect != kNoObject)
        return removeComponentOf(effect);
    if (keyframesMeant_ || (inPanels && keyframes_.isAnySelected()))
        return keyframes_.removeSelected();
    const ObjectId segment = workspace_.selection().get();
    if (keyboard == &strip_ && workspace_.edit().timeline().findSegment(segment))
        return sayRefusal(workspace_.editor().removeSegment(segment));
    say("There is nothing here to delete. Click a segment, the title of an effect or a keyframe first.");
}

void DeleteKey::removeComponentOf(ObjectId effect)
{
    if (workspace_.vob().isReadOnly())
        return say(refusal::kReadOnly);
    oribund::removeComponent(workspace_.vob(), workspace_.edit().timeline().findEffect(effect));
}

bool DeleteKey::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress)
        keyframesMeant_ = false;
    return QObject::eventFilter(watched, event);
}

int DeleteKey::handleSelection(const oribund::ValServerEvent<ObjectId>& event)
{
    if (event.kind == oribund::ValEventKind::Changed)
        keyframesMeant_ = false;
    return 0;
}

} // namespace workbench
