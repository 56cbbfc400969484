#include "oribund/controls/keyframes/KeyframeCommands.h"

#include "oribund/host/base/Numeric.h"
#include "oribund/host/edit/EditGesture.h"
#include "oribund/host/edit/Vob.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"
#include "oribund/host/effects/EffectInstance.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/toolkit/core/Drawable.h"

#include <algorithm>

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
        for (const auto& effect : effects->effectsAndPartsOf(track_))
            count += effects->getNumKeyframesSelected(effect->id(), {});
    }
    return count;
}

int KeyframeCommands::countSelected() const
{
    const CompoundEffectMonitor* const effects = monitor();
    return effects ? effects->getNumKeyframesSelected(IdStamp::wildcard(), {}) : 0;
}

bool KeyframeCommands::isWithinEffects() const
{
    CompoundEffectMonitor* const effects = monitor();
    if (!effects)
        return false;
    const double now = vob_->getCurrentTime();
    const auto working = effects->effectsAndPartsOf(track_);
    return std::any_of(working.begin(), working.end(), [&](const auto& effect) {
        const NumRange<double> region = effects->getEditRegion(effect->id());
        return now >= region.start() - kValueTolerance && now <= region.end() + kValueTolerance;
    });
}

bool KeyframeCommands::editAtCurrentTime(EditAt edit, const UIString& title) const
{
    if (!canEdit())
        return false;
    const RedrawHold hold;
    const EditModifier modifier(vob_->getEdit(), title);
    bool changed = false;
    for (const auto& effect : monitor()->effectsAndPartsOf(track_)) {
        // Asked for anew each time, as in select().
        if (CompoundEffectMonitor* const effects = monitor())
            changed = (effects->*edit)(track_, effect->id(), effects->getCurrentFXTime(effect)) || changed;
    }
    return changed;
}

bool KeyframeCommands::addAtCurrentTime() const
{
    return editAtCurrentTime(&CompoundEffectKeyframes::addKeyframesAt, UIString(TextIds::kAddKeyframesStep));
}

bool KeyframeCommands::removeAtCurrentTime() const
{
    return editAtCurrentTime(&CompoundEffectKeyframes::removeKeyframesAt, UIString(TextIds::kRemoveKeyframesStep));
}

bool KeyframeCommands::removeSelected() const
{
    const RedrawHold hold;
    return canEdit() && monitor()->removeSelectedKeyframes(IdStamp::wildcard(), {});
}

bool KeyframeCommands::removeSelectedOrHere() const
{
    return countSelected() > 0 ? removeSelected() : removeAtCurrentTime();
}

bool KeyframeCommands::moveSelected(int frames) const
{
    if (!canEdit() || countSelectedOnTrack() == 0)
        return false;
    const RedrawHold hold;
    const bool moved = trimSelected(frames * vob_->getEdit()->getCelResolution());
    if (CompoundEffectMonitor* const effects = monitor())
        effects->endTrim();
    return moved;
}

bool KeyframeCommands::trimSelected(double delta) const
{
    const RedrawHold hold;
    if (canEdit())
        monitor()->makeBackup(BackupKind::Undo, EffectModification());
    return canEdit() && monitor()->trimSelectedKeyframes(track_, delta);
}

} // namespace oribund
