#include "oribund/host/edit/monitor/CompoundEffectKeyframes.h"

#include "oribund/host/base/FXTimeMapping.h"
#include "oribund/host/base/Numeric.h"
#include "oribund/host/base/UIString.h"
#include "oribund/host/edit/Vob.h"
#include "oribund/host/edit/monitor/FollowedSelection.h"
#include "oribund/host/edit/monitor/TrackKeyframes.h"
#include "oribund/host/effects/keyframes/KeyframeClip.h"
#include "oribund/host/effects/keyframes/KeyframePaste.h"
#include "oribund/host/effects/keyframes/KeyframeRemoval.h"
#include "oribund/host/effects/keyframes/KeyframeSpan.h"
#include "oribund/host/effects/keyframes/KeyframeTrim.h"
#include "oribund/host/effects/params/ParamText.h"
#include "oribund/host/services/TextIds.h"

#include <algorithm>
#include <array>
#include <utility>

namespace oribund
{

namespace
{

/** "Remove keyframe", "Remove 3 keyframes". */
UIString titleOf(int step, int count)
{
    return UIString(step).withPlaceholder(L"WHAT", keyframesText(count));
}

} // namespace

/** Around an edit: what it changes is told as one, and the selection brought in step with it in the end. */
class CompoundEffectKeyframes::Editing
{
public:
    explicit Editing(CompoundEffectKeyframes& owner)
        : owner_(owner)
        , hold_(owner.relay_)
    {
        ++owner_.editing_;
    }

    ~Editing()
    {
        --owner_.editing_;
        owner_.followKeyframes();
    }

    Editing(const Editing&) = delete;
    Editing& operator=(const Editing&) = delete;

private:
    CompoundEffectKeyframes& owner_;
    EffectChangeRelay::Hold hold_;
};

bool CompoundEffectKeyframes::canEdit() const
{
    const EditPtr edit = vob_ ? vob_->getEdit() : EditPtr();
    return edit && !edit->isReadOnly();
}

Kt::Ptr<EffectInstance> CompoundEffectKeyframes::findAtWork(const IdStamp& track, const IdStamp& id) const
{
    for (const auto& effect : effectsAndPartsOf(track)) {
        if (effect->id() == id)
            return effect;
    }
    return {};
}

bool CompoundEffectKeyframes::addKeyframesAt(const IdStamp& track, const IdStamp& id, FXTime time)
{
    const Kt::Ptr<EffectInstance> effect = findAtWork(track, id);
    if (!effect || !canEdit() || !isWithinEffect(time.normalised))
        return false;
    std::vector<Kt::Ptr<EffectValParamBase>> lacking;
    forEachAnimated(*effect, [&](EffectValParamBase& param, const Graph1dBase& graph) {
        if (graph.indexAt(time.normalised) < 0 && effect->canEditParam(param))
            lacking.emplace_back(&param);
    });
    if (lacking.empty())
        return false;
    const Editing editing(*this);
    const EditModifier modifier(vob_->getEdit(), UIString(TextIds::kAddKeyframesStep));
    for (const auto& param : lacking)
        param->graph()->subdivide(time.normalised);
    return true;
}

bool CompoundEffectKeyframes::removeKeyframesAt(const IdStamp& track, const IdStamp& id, FXTime time)
{
    KeyframeRemoval removal;
    if (const Kt::Ptr<EffectInstance> effect = findAtWork(track, id)) {
        for (const auto& keyframe : keyframes_->setOf(effect).at(time.normalised))
            removal.add(*effect, keyframe.param, std::array{keyframe.time}, time.normalised);
    }
    return remove(removal);
}

bool CompoundEffectKeyframes::removeSelectedKeyframes(const IdStamp& effect, const IdStamp& param)
{
    KeyframeRemoval removal;
    for (const auto& [key, times] : keyframeSelection().all()) {
        const Kt::Ptr<EffectInstance> owner = findEffect(key.first);
        if (owner && vob_ && KeyframeSelection::matches(key, effect, param)) {
            const FXTime now = toFXTime(getEditRegion(key.first), vob_->getCurrentTime());
            removal.add(*owner, key.second, times, clampNormalisedTime(now.normalised));
        }
    }
    return remove(removal);
}

bool CompoundEffectKeyframes::remove(const KeyframeRemoval& removal)
{
    if (removal.count() == 0 || !canEdit())
        return false;
    const Editing editing(*this);
    const EditModifier modifier(vob_->getEdit(), titleOf(TextIds::kRemoveStep, removal.count()));
    removal.apply();
    return true;
}

std::shared_ptr<KeyframeTrim> CompoundEffectKeyframes::beginTrim(const IdStamp& track)
{
    auto trim = std::make_shared<KeyframeTrim>(vob_->getEdit()->getCelResolution(), [this](const IdStamp& id) {
        return KeyframeTrim::Found{findEffect(id), getEditRegion(id).length()};
    });
    for (const auto& effect : effectsAndPartsOf(track))
        trim->add(*effect, getEditRegion(effect->id()).length(), keyframeSelection());
    return trim;
}

bool CompoundEffectKeyframes::trimSelectedKeyframes(const IdStamp& track, double delta)
{
    if (!canEdit() || gesture_.isLost())
        return false;
    if (!trim_)
        trim_ = beginTrim(track);
    const std::shared_ptr<KeyframeTrim> trim = trim_; // an observer may end the gesture
    const Editing editing(*this);
    if (!trim->moveBy(delta))
        return false;
    select(*trim);
    return true;
}

void CompoundEffectKeyframes::select(KeyframeTrim& trim)
{
    KeyframeSelection moved = keyframeSelection();
    trim.select(moved);
    selection_->set(std::move(moved));
}

void CompoundEffectKeyframes::makeBackup(BackupKind, const EffectModification&)
{
    if (canEdit() && !gesture_.isBegun())
        gesture_.begin(vob_->getEdit());
}

void CompoundEffectKeyframes::endTrim()
{
    trim_.reset();
    gesture_.finish();
}

void CompoundEffectKeyframes::cancelTrim()
{
    const std::shared_ptr<KeyframeTrim> trim = std::exchange(trim_, nullptr);
    if (!trim || !canEdit() || gesture_.isLost()) {
        gesture_.finish();
        return;
    }
    const Editing editing(*this);
    gesture_.abort();
    // An edit that keeps no journal, and a gesture that was not announced, leave it to us.
    trim->restore();
    select(*trim);
}

KeyframeClip CompoundEffectKeyframes::copySelectedKeyframes(const IdStamp& effect, const IdStamp& param) const
{
    double origin = Graph1dBase::kMaxTime;
    for (const auto& [key, times] : keyframeSelection().all()) {
        if (KeyframeSelection::matches(key, effect, param))
            origin = std::min(origin, toEditTime(getEditRegion(key.first), FXTime{times.front()}));
    }
    KeyframeClip clip;
    for (const auto& [key, times] : keyframeSelection().all()) {
        const Kt::Ptr<EffectInstance> owner = findEffect(key.first);
        if (owner && KeyframeSelection::matches(key, effect, param))
            clip.add(*owner, getEditRegion(key.first), origin, key.second, times);
    }
    return clip;
}

int CompoundEffectKeyframes::pasteKeyframes(const IdStamp& track, const KeyframeClip& clip,
                                            const std::optional<PasteTarget>& target)
{
    if (!canEdit())
        return 0;
    KeyframePaste paste(clip, vob_->getCurrentTime(), vob_->getEdit()->getCelResolution());
    for (const auto& effect : effectsAndPartsOf(track))
        paste.offer(effect, getEditRegion(effect->id()));
    if (target)
        paste.placeAllIn(target->effect, target->param);
    else
        paste.place();
    const int count = paste.count();
    if (count == 0)
        return 0;
    const Editing editing(*this);
    const EditModifier modifier(vob_->getEdit(), titleOf(TextIds::kPasteStep, count));
    KeyframeSelection pasted;
    paste.apply(pasted);
    selection_->set(std::move(pasted));
    return count;
}

} // namespace oribund
