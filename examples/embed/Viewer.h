#pragma once

#include <oribund/host/edit/Cue.h>
#include <oribund/host/edit/Edit.h>
#include <oribund/host/edit/Vob.h>
#include <oribund/host/edit/monitor/CompoundEffectMonitor.h>
#include <oribund/host/effects/EffectInstance.h>
#include <oribund/host/effects/params/EffectWatch.h>

#include <utility>

/** An edit of ten seconds without undo. */
class SmallEdit : public oribund::Edit
{
    oribund::Cookie getCookie() const override { return {}; }

    double getCelResolution() const override { return 0.04; }

    double getEndTime() const override { return 10.0; }

    bool isReadOnly() const override { return false; }

    const oribund::CueList& getCues() const override { return cues_; }

    bool setCue(const oribund::Cue& cue) override
    {
        const bool known = cues_.remove(cue.id);
        if (known)
            cues_.add(cue);
        return known;
    }

    oribund::CueList cues_;
};

/** Knows one effect, which runs over the whole edit, and tells of its changes. */
class OneEffect : public oribund::CompoundEffectMonitor
{
public:
    OneEffect(oribund::Vob& vob, oribund::Kt::Ptr<oribund::EffectInstance> effect)
        : CompoundEffectMonitor(vob)
        , effect_(std::move(effect))
    {
    }

    std::vector<oribund::Kt::Ptr<oribund::EffectInstance>> getEffects(const oribund::IdStamp&) const override
    {
        return {effect_};
    }

    std::vector<oribund::IdStamp> getTracks() const override { return {oribund::IdStamp(1, 0, 0)}; }

    oribund::Kt::Ptr<oribund::EffectInstance> findEffect(const oribund::IdStamp& id) const override
    {
        return id == effect_->id() ? effect_ : nullptr;
    }

    oribund::NumRange<double> getEditRegion(const oribund::IdStamp& id) const override
    {
        return id == effect_->id() ? oribund::NumRange<double>(0.0, 10.0) : oribund::NumRange<double>();
    }

private:
    oribund::Kt::Ptr<oribund::EffectInstance> effect_;
    oribund::EffectWatch watch_{*effect_, [this](const auto& change) { effectChanged(change); }};
};

/** A viewer of that edit, which shows everything and never plays. */
class Viewer : public oribund::Vob
{
public:
    explicit Viewer(const oribund::Kt::Ptr<oribund::EffectInstance>& effect)
        : edit_(oribund::Kt::makePtr<SmallEdit>())
        , monitor_(*this, effect)
    {
    }

    oribund::EditPtr getEdit() const override { return edit_; }

    oribund::ValServer<double>& getCurrentTimeServer() override { return currentTime_; }

    void setCurrentTime(double editTime) override { currentTime_.set(editTime); }

    oribund::CompoundEffectMonitor* getEffectMonitor() override { return &monitor_; }

    bool isPlaying() const override { return false; }

    void stopPlay() override {}

    oribund::NumRange<double> getViewRange() const override { return {0.0, 10.0}; }

    void setViewRange(const oribund::NumRange<double>&) override {}

    std::vector<oribund::IdStamp> getSelectedChans() const override { return {}; }

private:
    oribund::EditPtr edit_;
    oribund::ValServer<double> currentTime_{0.0};
    OneEffect monitor_;
};
