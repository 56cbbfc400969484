#include "oribund/host/edit/monitor/CompoundEffectKeyframes.h"

#include "oribund/host/base/FXTimeMapping.h"
#include "oribund/host/base/Numeric.h"
#include "oribund/host/base/UIString.h"
#include "oribund/host/edit/Vob.h"
#include "oribund/host/edit/monitor/KeyframeChanges.h"
#include "oribund/host/edit/monitor/TrackKeyframes.h"
#include "oribund/host/effects/keyframes/KeyframeClip.h"
#include "oribund/host/effects/keyframes/KeyframePaste.h"
#include "oribund/host/effects/keyframes/KeyframeRemoval.h"
#include "oribund/host/effects/keyframes/KeyframeSpan.h"
#include "oribund/host/effects/keyframes/KeyframeTrim.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace oribund
{

namespace
{

/** "Remove keyframe", "Remove 3 keyframes". */
UIString titleOf(const wchar_t* verb, int count)
{
    const WString what = count == 1 ? WString(L"keyframe") : reinterpretValType<WString>(count) + L" keyframes";
    return UIString(L"$VERB$ $WHAT$").withPlaceholder(L"VERB", verb).withPlaceholder(L"WHAT", what);
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
        if (--owner_.editing_ > 0)
            return;
        for (const auto& [effect, param] : std::exchange(owner_.changed_, {}))
            owner_.dropGone(effect, param);
    }

    Editing(const Editing&) = delete;
    Editing& operator=(const Editing&) = delete;

private:
    CompoundEffectKeyframes& owner_;
    EffectChangeRelay::Hold hold_;
};

CompoundEffectKeyframes::CompoundEffectKeyframes(Vob& vob)
    : vob_(&vob)
    , keyframes_(std::make_unique<TrackKeyframes>(*this, selection_))
{
}

CompoundEffectKeyframes::~CompoundEffectKeyframes() = default;

bool CompoundEffectKeyframes::canEdit() const
{
    const EditPtr edit = vob_ ? vob_->getEdit() : EditPtr();
    return edit && !edit->isReadOnly();
}

void CompoundEffectKeyframes::populateKeyframesForCompoundEffect(const IdStamp& track, KeyframeSets& sets)
{
    keyframes_->follow(track);
    KeyframeSets found;
    for (const auto& effect : getEffects(track))
        found.emplace(effect, keyframes_->setOf(effect));
    sets.swap(found);
}

int CompoundEffectKeyframes::getNumKeyframedParams(const IdStamp& track)
{
    int count = 0;
    for (const auto& effect : getEffects(track))
        count += keyframes_->setOf(effect).keyframedParamCount();
    return count;
}

void CompoundEffectKeyframes::selectKeyframe(const FXKeyframeHelpers::FXKeyframe& keyframe, bool select)
{
    const Kt::Ptr<EffectInstance> effect = findEffect(keyframe.effect);
    const Graph1dBase* const graph = effect ? animatedGraph(effect->findParam(keyframe.param).get()) : nullptr;
    const int index = graph && isWithinEffect(keyframe.time) ? graph->indexAt(keyframe.time) : -1;
    if (index >= 0 && selection_.set(keyframe.effect, keyframe.param, graph->timeAt(index), select))
        tellSelection(keyframe.effect, keyframe.param);
}

void CompoundEffectKeyframes::selectAllKeyframes(const IdStamp& effect, const IdStamp& param, bool select)
{
    const KeyframeSelection before = selection_;
    selection_.clear(effect, param);
    if (select) {
        for (const auto& known : effect.isWildcard() ? keyframes_->knownEffects() : std::vector{findEffect(effect)}) {
            if (known)
                selectAllOf(*known, param);
        }
    }
    if (selection_ != before)
        tellSelection(effect, param);
}

void CompoundEffectKeyframes::selectAllOf(const EffectInstance& effect, const IdStamp& which)
{
    forEachAnimated(effect, [&](const EffectValParamBase& param, const Graph1dBase& graph) {
        if (!KeyframeSelection::matches({effect.id(), param.id()}, effect.id(), which))
            return;
        const KeyframeSpan span(graph);
        std::vector<double> times;
        for (int i = span.first; i < span.end; ++i)
            times.push_back(graph.timeAt(i));
        selection_.assign(effect.id(), param.id(), std::move(times));
    });
}

int CompoundEffectKeyframes::getNumKeyframesSelected(const IdStamp& effect, const IdStamp& param) const
{
    return selection_.count(effect, param);
}

Kt::Ptr<EffectInstance> CompoundEffectKeyframes::findAtWork(const IdStamp& track, const IdStamp& id) const
{
    for (const auto& effect : getEffects(track)) {
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
    const EditModifier modifier(vob_->getEdit(), L"Add keyframes");
    for (const auto& param : lacking)
        param->graph()->addKeyframe(time.normalised);
    tell(EffectChangeCode::KeyframesChanged, id);
    return true;
}

bool CompoundEffectKeyframes::removeKeyframesAt(const IdStamp& track, const IdStamp& id, FXTime time)
{
    KeyframeRemoval removal;
    if (const Kt::Ptr<EffectInstance> effect = findAtWork(track, id)) {
        for (const auto& keyframe : keyframes_->setOf(effect).at(time.normalised))
            removal.add(*effect, keyframe.param, std::array{keyframe.time}, time.normalised);
    }
    return remove(removal, id);
}

bool CompoundEffectKeyframes::removeSelectedKeyframes(const IdStamp& effect, const IdStamp& param)
{
    KeyframeRemoval removal;
    for (const auto& [key, times] : selection_.all()) {
        const Kt::Ptr<EffectInstance> owner = findEffect(key.first);
        if (owner && vob_ && KeyframeSelection::matches(key, effect, param)) {
            const FXTime now = toFXTime(getEditRegion(key.first), vob_->getCurrentTime());
            removal.add(*owner, key.second, times, clampNormalisedTime(now.normalised));
        }
    }
    return remove(removal, effect);
}

bool CompoundEffectKeyframes::remove(const KeyframeRemoval& removal, const IdStamp& effect)
{
    if (removal.count() == 0 || !canEdit())
        return false;
    const Editing editing(*this);
    const EditModifier modifier(vob_->getEdit(), titleOf(L"Remove", removal.count()));
    removal.apply();
    tell(EffectChangeCode::KeyframesChanged, effect);
    return true;
}

std::shared_ptr<KeyframeTrim> CompoundEffectKeyframes::beginTrim(const IdStamp& track)
{
    auto trim = std::make_shared<KeyframeTrim>(vob_->getEdit()->getCelResolution(),
                                               [this](const IdStamp& id) { return findEffect(id); });
    for (const auto& effect : getEffects(track))
        trim->add(*effect, getEditRegion(effect->id()).length(), selection_);
    return trim;
}

bool CompoundEffectKeyframes::trimSelectedKeyframes(const IdStamp& track, double delta)
{
    if (!canEdit())
        return false;
    if (!trim_ || trim_->empty())
        trim_ = beginTrim(track);
    const std::shared_ptr<KeyframeTrim> trim = trim_; // an observer may end the gesture
    const Editing editing(*this);
    if (!trim->moveBy(delta))
        return false;
    trim->select(selection_);
    tell(EffectChangeCode::KeyframesMoved, IdStamp::wildcard());
    return true;
}

void CompoundEffectKeyframes::endTrim()
{
    trim_.reset();
    endBackups();
}

void CompoundEffectKeyframes::cancelTrim()
{
    const std::shared_ptr<KeyframeTrim> trim = std::exchange(trim_, nullptr);
    if (!trim || !canEdit()) {
        endBackups();
        return;
    }
    const Editing editing(*this);
    restoreBackups();
    // A host that keeps no backups, and none for a gesture that was not announced, leaves it to us.
    trim->restore();
    trim->select(selection_);
    tell(EffectChangeCode::KeyframesMoved, IdStamp::wildcard());
}

KeyframeClip CompoundEffectKeyframes::copySelectedKeyframes(const IdStamp& effect, const IdStamp& param) const
{
    double origin = Graph1dBase::kMaxTime;
    for (const auto& [key, times] : selection_.all()) {
        if (KeyframeSelection::matches(key, effect, param))
            origin = std::min(origin, toEditTime(getEditRegion(key.first), FXTime{times.front()}));
    }
    KeyframeClip clip;
    for (const auto& [key, times] : selection_.all()) {
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
    for (const auto& effect : getEffects(track))
        paste.offer(effect, getEditRegion(effect->id()));
    if (target)
        paste.placeAllIn(target->effect, target->param);
    else
        paste.place();
    const int count = paste.count();
    if (count == 0)
        return 0;
    const Editing editing(*this);
    const EditModifier modifier(vob_->getEdit(), titleOf(L"Paste", count));
    KeyframeSelection pasted;
    paste.apply(pasted);
    selection_ = std::move(pasted);
    tell(EffectChangeCode::KeyframesChanged, IdStamp::wildcard());
    return count;
}

std::optional<double> CompoundEffectKeyframes::findAdjacentKeyframe(const IdStamp& track, bool forward)
{
    return vob_ ? keyframes_->adjacent(track, vob_->getCurrentTime(), forward) : std::nullopt;
}

bool CompoundEffectKeyframes::moveToAdjacentKeyframe(const IdStamp& track, bool forward)
{
    const std::optional<double> time = findAdjacentKeyframe(track, forward);
    if (time)
        vob_->setCurrentTime(*time);
    return time.has_value();
}

void CompoundEffectKeyframes::noteChange(const EffectChangeDescription& change)
{
    keyframes_->note(change);
    if (!affectsKeyframes(change))
        return;
    if (editing_ > 0)
        changed_.emplace_back(change.effect, change.param);
    else
        dropGone(change.effect, change.param);
}

/** Deselects keyframes that are not there any more. */
void CompoundEffectKeyframes::dropGone(const IdStamp& effect, const IdStamp& param)
{
    std::vector<KeyframeSelection::Key> concerned;
    for (const auto& [key, times] : selection_.all()) {
        if (KeyframeSelection::matches(key, effect, param))
            concerned.push_back(key);
    }
    for (const auto& [effectId, paramId] : concerned) {
        const Kt::Ptr<EffectInstance> owner = findEffect(effectId);
        const Graph1dBase* const graph = owner ? animatedGraph(owner->findParam(paramId).get()) : nullptr;
        const auto selected = selection_.times(effectId, paramId);
        std::vector<double> left;
        std::copy_if(selected.begin(), selected.end(), std::back_inserter(left),
                     [graph](double time) { return graph && isWithinEffect(time) && graph->indexAt(time) >= 0; });
        if (left.size() != selected.size())
            selection_.assign(effectId, paramId, std::move(left));
    }
}

void CompoundEffectKeyframes::tell(EffectChangeCode code, const IdStamp& effect)
{
    EffectChangeDescription change;
    change.code = code;
    change.effect = effect;
    noteChange(change);
    relay_.tell(change);
}

void CompoundEffectKeyframes::tellSelection(const IdStamp& effect, const IdStamp& param)
{
    EffectChangeDescription change;
    change.code = EffectChangeCode::SelectionChanged;
    change.flags = EffectChangeDescription::kSelectionOnly;
    change.effect = effect;
    change.param = param;
    relay_.tell(change);
}

} // namespace oribund
