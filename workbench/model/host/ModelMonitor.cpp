#include "workbench/model/host/ModelMonitor.h"

#include "workbench/model/Ids.h"
#include "workbench/model/host/ModelVob.h"

namespace workbench
{

using oribund::EffectChangeCode;
using oribund::IdStamp;
using Type = oribund::EditModification::Type;

ModelMonitor::ModelMonitor(ModelVob& vob, EditModel& edit)
    : CompoundEffectMonitor(vob)
    , vob_(vob)
    , edit_(edit)
    , modifications_(this, &ModelMonitor::handleModification)
    , params_(this, &ModelMonitor::handleParam)
{
    modifications_.attach(edit.modifications());
    params_.attach(edit.paramEdits());
}

ModelMonitor::~ModelMonitor() = default;

const Segment* ModelMonitor::shownSegment(const IdStamp& track) const
{
    const Segment* const selected = edit_.timeline().findSegment(vob_.selectedSegment());
    if (selected && selected->track == objectOf(track))
        return selected;
    return edit_.timeline().segmentAt(objectOf(track), vob_.currentFrame());
}

std::vector<oribund::Kt::Ptr<oribund::EffectInstance>> ModelMonitor::getEffects(const IdStamp& track) const
{
    std::vector<oribund::Kt::Ptr<oribund::EffectInstance>> effects;
    if (const Segment* segment = shownSegment(track))
        effects.assign(segment->effects.begin(), segment->effects.end());
    return effects;
}

std::vector<IdStamp> ModelMonitor::getTracks() const
{
    std::vector<IdStamp> tracks;
    for (const auto& track : edit_.timeline().tracks())
        tracks.push_back(stampOf(track->id()));
    return tracks;
}

oribund::WString ModelMonitor::getTrackName(const IdStamp& id) const
{
    const Track* const track = edit_.timeline().findTrack(objectOf(id));
    return track ? oribund::toWide(track->data.name) : oribund::WString();
}

std::vector<oribund::Kt::Ptr<oribund::EffectInstance>> ModelMonitor::getEffectsAt(double editTime) const
{
    std::vector<oribund::Kt::Ptr<oribund::EffectInstance>> effects;
    const int frame = vob_.frameOf(editTime);
    for (const auto& track : edit_.timeline().tracks()) {
        for (const Segment* const segment : track->segments) {
            if (segment->data.start <= frame && frame <= segment->data.end())
                effects.insert(effects.end(), segment->effects.begin(), segment->effects.end());
        }
    }
    return effects;
}

bool ModelMonitor::isChanging() const
{
    return edit_.undoStack().isApplying();
}

oribund::Kt::Ptr<oribund::EffectInstance> ModelMonitor::findEffect(const IdStamp& effect) const
{
    return edit_.timeline().findEffect(objectOf(effect));
}

oribund::NumRange<double> ModelMonitor::getEditRegion(const IdStamp& effect) const
{
    const Segment* const segment = edit_.timeline().segmentOfEffect(objectOf(effect));
    if (!segment)
        return {};
    return {vob_.timeOf(segment->data.start), vob_.timeOf(segment->data.end())};
}

int ModelMonitor::handleModification(const oribund::EditModification& modification)
{
    oribund::EffectChangeDescription change;
    change.effect = IdStamp::wildcard();
    switch (modification.type) {
    case Type::Cues:
    case Type::Transitions:
        return 0;
    case Type::EffectDetails:
        change.code = EffectChangeCode::EnabledChanged;
        change.effect = modification.object;
        break;
    case Type::EffectContent:
        // The parameters themselves have told all but what becomes of selected keyframes once the whole step is there.
        change.code = EffectChangeCode::KeyframesChanged;
        change.flags = oribund::EffectChangeDescription::kToldByParams;
        change.effect = modification.object;
        break;
    default:
        // Effects may have come, gone, or come back as new objects.
        change.code = EffectChangeCode::ParamSetRestored;
        change.flags = oribund::EffectChangeDescription::kWholesaleRefresh;
        break;
    }
    effectChanged(change);
    return 0;
}

int ModelMonitor::handleParam(const ParamEdited& edited)
{
    effectChanged(edited);
    return 0;
}

} // namespace workbench
