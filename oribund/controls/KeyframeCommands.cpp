#include "oribund/controls/KeyframeCommands.h"

#include "oribund/controls/ControlTexts.h"
#include "oribund/host/edit/CompoundEffectMonitor.h"
#include "oribund/host/edit/Vob.h"
#include "oribund/host/effects/EffectInstance.h"
#include "oribund/host/toolkit/Drawable.h"

namespace oribund
{

CompoundEffectMonitor* KeyframeCommands::monitor() const
{
    return vob_ ? vob_->getEffectMonitor() : nullptr;
}

bool KeyframeCommands::canEdit() const
{
    const EditPtr edit = monitor() ? vob_->getEdit() : EditPtr();
    return edit && !edit->isReadOnly();
}

void KeyframeCommands::stopPlay() const
{
    if (vob_ && vob_->isPlaying())
        vob_->stopPlay();
}

void KeyframeCommands::goToAdjacent(bool forward) const
{
    stopPlay();
    if (CompoundEffectMonitor* const effects = monitor())
        effects->moveToAdjacentKeyframe(track_, forward);
}

void KeyframeCommands::select(const Keyframes& keyframes, bool select) const
{
    const RedrawHold hold;
    for (const auto& keyframe : keyframes) {
        // Asked for anew each time: who hears of the first may close the edit.
        if (CompoundEffectMonitor* const effects = monitor())
            effects->selectKeyframe(keyframe, select);
    }
}

void KeyframeCommands::toggle(const Keyframes& keyframes) const
{
    const RedrawHold hold;
    for (const auto& keyframe : keyframes)
        select({keyframe}, !keyframe.selected);
}

void KeyframeCommands::selectAll(bool select) const
{
    const RedrawHold hold;
    if (CompoundEffectMonitor* const effects = monitor())
        effects->selectAllKeyframes(IdStamp::wildcard(), {}, select);
}

int KeyframeCommands::countSelectedOnTrack() const
{
    const CompoundEffectMonitor* const effects = monitor();
    int count = 0;
    if (effects) {
        for (const auto& effect : effects->getEffects(track_))
            count += effects->getNumKeyframesSelected(effect->id(), {});
    }
    return count;
}

int KeyframeCommands::countSelected() const
{
    const CompoundEffectMonitor* const effects = monitor();
    return effects ? effects->getNumKeyframesSelected(IdStamp::wildcard(), {}) : 0;
}

void KeyframeCommands::editAtCurrentTime(EditAt edit, const UIString& title) const
{
    if (!canEdit())
        return;
    const RedrawHold hold;
    const EditModifier modifier(vob_->getEdit(), title);
    for (const auto& effect : monitor()->getEffects(track_)) {
        // Asked for anew each time, as in select().
        if (CompoundEffectMonitor* const effects = monitor())
            (effects->*edit)(track_, effect->id(), effects->getCurrentFXTime(effect));
    }
}

void KeyframeCommands::addAtCurrentTime() const
{
    editAtCurrentTime(&CompoundEffectKeyframes::addKeyframesAt, controlText(ControlText::AddStep));
}

void KeyframeCommands::removeAtCurrentTime() const
{
    editAtCurrentTime(&CompoundEffectKeyframes::removeKeyframesAt, controlText(ControlText::RemoveStep));
}

void KeyframeCommands::removeSelected() const
{
    const RedrawHold hold;
    if (canEdit())
        monitor()->removeSelectedKeyframes(IdStamp::wildcard(), {});
}

void KeyframeCommands::moveSelected(int frames) const
{
    if (!canEdit() || countSelectedOnTrack() == 0)
        return;
    const RedrawHold hold;
    trimSelected(frames * vob_->getEdit()->getCelResolution());
    if (CompoundEffectMonitor* const effects = monitor())
        effects->endTrim();
}

void KeyframeCommands::trimSelected(double delta) const
{
    const RedrawHold hold;
    if (canEdit())
        monitor()->makeBackup(BackupKind::Undo, EffectModification());
    if (canEdit())
        monitor()->trimSelectedKeyframes(track_, delta);
}

} // namespace oribund
