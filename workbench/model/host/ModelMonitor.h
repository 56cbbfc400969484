#pragma once

#include "oribund/host/edit/EditModification.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"
#include "workbench/model/EditModel.h"

namespace workbench
{

class ModelVob;

/**
 * The effects of an edit as a viewer's panels see them: on the track of the selected segment those of that segment,
 * wherever the current time is, on other tracks those of the segment under the current time.
 */
class ModelMonitor : public oribund::CompoundEffectMonitor
{
public:
    /** Both outlive the monitor. */
    ModelMonitor(ModelVob& vob, EditModel& edit);
    ~ModelMonitor() override;

    std::vector<oribund::Kt::Ptr<oribund::EffectInstance>> getEffects(const oribund::IdStamp& track) const override;
    std::vector<oribund::IdStamp> getTracks() const override;
    std::vector<oribund::Kt::Ptr<oribund::EffectInstance>> getEffectsAt(double editTime) const override;
    bool isChanging() const override;
    oribund::Kt::Ptr<oribund::EffectInstance> findEffect(const oribund::IdStamp& effect) const override;
    oribund::WString getTrackName(const oribund::IdStamp& track) const override;
    oribund::NumRange<double> getEditRegion(const oribund::IdStamp& effect) const override;

private:
    const Segment* shownSegment(const oribund::IdStamp& track) const;
    int handleModification(const oribund::EditModification& modification);
    int handleParam(const ParamEdited& edited);

    ModelVob& vob_;
    EditModel& edit_;
    oribund::MethodCallback<ModelMonitor, oribund::EditModification> modifications_;
    oribund::MethodCallback<ModelMonitor, ParamEdited> params_;
};

} // namespace workbench
