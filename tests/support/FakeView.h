#pragma once

#include "oribund/host/base/UIString.h"
#include "oribund/host/edit/Cue.h"
#include "oribund/host/edit/Edit.h"
#include "oribund/host/edit/EditGesture.h"
#include "oribund/host/edit/Vob.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"
#include "oribund/host/edit/monitor/FXViewHandle.h"
#include "oribund/host/effects/EffectInstance.h"
#include "oribund/host/effects/params/EffectWatch.h"
#include "oribund/host/services/TextTable.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

namespace oribund::test
{

/** An edit of one track, at 25 frames a second, that counts undo steps and gestures. */
class FakeEdit : public Edit, private iGestureJournal
{
public:
    Cookie getCookie() const override { return {}; }

    double getCelResolution() const override { return 0.04; }

    double getEndTime() const override { return 100.0; }

    bool isReadOnly() const override { return readOnly; }

    const CueList& getCues() const override { return cues; }

    bool setCue(const Cue& cue) override
    {
        if (readOnly || !cues.remove(cue.id))
            return false;
        cues.add(cue);
        EditModification modification;
        modification.type = EditModification::Type::Cues;
        modification.object = cue.id;
        addModification(modification);
        return true;
    }

    iGestureJournal* gestureJournal() override { return keepsJournal ? this : nullptr; }

    Number beginGesture(const UIString& text) override
    {
        if (!text.empty()) {
            if (open++ == 0)
                title = displayText(text);
            return kNamed;
        }
        ++begun;
        return gesture = kNamed + static_cast<Number>(begun);
    }

    bool isGestureOpen(Number number) const override
    {
        return number == kNamed ? open > 0 : number != kNone && number == gesture;
    }

    void finishGesture(Number number) override
    {
        if (number != kNamed) {
            gesture = kNone;
            ++finished;
        } else if (--open == 0) {
            ++steps;
        }
    }

    bool abortGesture(Number) override
    {
        gesture = kNone;
        ++aborted;
        return false;
    }

    bool takeBackGesture(Number) override { return false; }

    static constexpr Number kNamed = 1;
    bool keepsJournal = true;
    bool readOnly = false;
    CueList cues;
    int open = 0;
    int steps = 0;
    WString title;          ///< of the step opened last
    Number gesture = kNone; ///< the open one without a text
    int begun = 0;          ///< gestures without a text, and what has become of them
    int finished = 0;
    int aborted = 0;
};

/** A monitor over a list of effects with their regions. */
class FakeMonitor : public CompoundEffectMonitor
{
public:
    explicit FakeMonitor(Vob& vob)
        : CompoundEffectMonitor(vob)
    {
    }

    /** The one track. */
    static IdStamp track() { return {1, 0, 0}; }

    std::vector<Kt::Ptr<EffectInstance>> getEffects(const IdStamp& id) const override
    {
        std::vector<Kt::Ptr<EffectInstance>> all;
        if (id != track())
            return all;
        for (const auto& [effect, region] : effects)
            all.push_back(effect);
        return all;
    }

    std::vector<IdStamp> getTracks() const override { return {track()}; }

    Kt::Ptr<EffectInstance> findEffect(const IdStamp& id) const override
    {
        const auto found = find(id);
        return found == effects.end() ? Kt::Ptr<EffectInstance>() : EffectInstance::findWithin(found->first, id);
    }

    NumRange<double> getEditRegion(const IdStamp& id) const override
    {
        const auto found = find(id);
        return found == effects.end() ? NumRange<double>(0.0, 0.0) : found->second;
    }

    void makeBackup(BackupKind kind, const EffectModification& modification) override
    {
        CompoundEffectMonitor::makeBackup(kind, modification);
        ++backups;
        lastModification = modification;
    }

    /** Tells the clients of a change with the given code, as a host does. */
    void tell(EffectChangeCode code, const IdStamp& effect, unsigned flags = 0)
    {
        EffectChangeDescription change;
        change.code = code;
        change.effect = effect;
        change.flags = flags;
        watch();
        effectChanged(change);
    }

    /** Tells of all that happens to the parameters that the effects have now. */
    void watch()
    {
        watches_.clear();
        for (const auto& [effect, region] : effects) {
            if (effect)
                watches_.emplace_back(*effect,
                                      [this](const EffectChangeDescription& change) { effectChanged(change); });
        }
    }

    std::vector<std::pair<Kt::Ptr<EffectInstance>, NumRange<double>>> effects;
    int backups = 0;
    EffectModification lastModification; ///< that a backup was made for

private:
    std::vector<EffectWatch> watches_;

    std::vector<std::pair<Kt::Ptr<EffectInstance>, NumRange<double>>>::const_iterator find(const IdStamp& id) const
    {
        return std::find_if(effects.begin(), effects.end(),
                            [&id](const auto& entry) { return EffectInstance::findWithin(entry.first, id); });
    }
};

/** A viewer of a FakeEdit. */
class FakeVob : public Vob
{
public:
    FakeVob()
        : edit(Kt::makePtr<FakeEdit>())
        , currentTime(0.0)
        , monitor(std::make_unique<FakeMonitor>(*this))
    {
    }

    EditPtr getEdit() const override { return edit; }

    ValServer<double>& getCurrentTimeServer() override { return currentTime; }

    void setCurrentTime(double editTime) override { currentTime.set(editTime); }

    CompoundEffectMonitor* getEffectMonitor() override { return monitor.get(); }

    bool isPlaying() const override { return playing; }

    void stopPlay() override { playing = false; }

    NumRange<double> getViewRange() const override { return viewRange; }

    void setViewRange(const NumRange<double>& range) override { viewRange = range; }

    std::vector<IdStamp> getSelectedChans() const override { return {}; }

    /** Puts an effect on the edit and gives its handle. */
    FXViewHandle add(const Kt::Ptr<EffectInstance>& effect, double start = 0.0, double end = 10.0)
    {
        monitor->effects.emplace_back(effect, NumRange<double>(start, end));
        return FXViewHandle(monitor->getFXVob(effect));
    }

    Kt::Ptr<FakeEdit> edit;
    ValServer<double> currentTime;
    std::unique_ptr<FakeMonitor> monitor;
    bool playing = false;
    NumRange<double> viewRange{0.0, 100.0};
};

} // namespace oribund::test
