#pragma once

#include "oribund/host/edit/EditModification.h"
#include "workbench/model/Ids.h"
#include "workbench/model/Timeline.h"

#include <memory>
#include <type_traits>
#include <utility>

namespace workbench
{

/** The smallest part of an undo step: ids and values, with which a timeline is brought from one state to the next and
    back. */
class EditChange
{
public:
    virtual ~EditChange() = default;

    virtual void apply(Timeline& timeline) = 0;
    virtual void revert(Timeline& timeline) = 0;

    /** Whether it only gives values to an object that stays, so that it may change places with another of its kind. */
    virtual bool isAssignment() const { return false; }

    /** Takes a later change into itself, where one change can say both. Only assignments lie between the two. */
    virtual bool absorb(const EditChange&) { return false; }

    /** Whether it leaves everything as it was. */
    virtual bool isNull() const { return false; }

    /** Whether it gives parameters a whole setting, on top of which what is done to them later has to come. */
    virtual bool setsParams() const { return false; }

    /** The step is complete: takes no more room than it has to from now on. */
    virtual void finish() {}

    /** What observers of the edit are told when it is applied or reverted. */
    virtual oribund::EditModification modification() const = 0;
};

using EditChangePtr = std::unique_ptr<EditChange>;

oribund::EditModification modificationOf(const TrackRecord& record);
oribund::EditModification modificationOf(const SegmentRecord& record);
oribund::EditModification modificationOf(const EffectRecord& record);
oribund::EditModification modificationOf(const MaskRecord& record);
oribund::EditModification modificationOf(const TransitionRecord& record);
oribund::EditModification modificationOf(const MediaData& media);
oribund::EditModification modificationOf(const oribund::Cue& cue);
oribund::EditModification modificationOf(const Placement& placement);
oribund::EditModification modificationOf(const SegmentLink& link);
oribund::EditModification modificationOf(const EffectState& state);
oribund::EditModification modificationOf(const EffectName& name);
oribund::EditModification modificationOf(const ParamRecord& record);
oribund::EditModification modificationOf(const TrackState& state);

/** An object comes into the edit, or goes. */
template <class Record>
class PresenceChange : public EditChange
{
public:
    PresenceChange(Record record, bool present)
        : record_(std::move(record))
        , present_(present)
    {
    }

    void apply(Timeline& timeline) override { make(timeline, present_); }

    void revert(Timeline& timeline) override { make(timeline, !present_); }

    oribund::EditModification modification() const override { return modificationOf(record_); }

private:
    void make(Timeline& timeline, bool present)
    {
        if (present)
            timeline.insert(record_);
        else
            timeline.erase(record_);
    }

    Record record_;
    bool present_;
};

/** Some fields of an object take other values. */
template <class Record>
class AssignChange : public EditChange
{
public:
    AssignChange(Record before, Record after)
        : before_(std::move(before))
        , after_(std::move(after))
    {
    }

    void apply(Timeline& timeline) override { timeline.assign(after_); }

    void revert(Timeline& timeline) override { timeline.assign(before_); }

    // An effect's index means something only in the order in which the indices were given.
    bool isAssignment() const override { return !std::is_same_v<Record, EffectState>; }

    bool absorb(const EditChange& next) override
    {
        const auto* const same = dynamic_cast<const AssignChange*>(&next);
        if (!same || !(same->before_ == after_))
            return false;
        after_ = same->after_;
        return true;
    }

    bool isNull() const override { return before_ == after_; }

    bool setsParams() const override { return std::is_same_v<Record, ParamRecord>; }

    oribund::EditModification modification() const override { return modificationOf(after_); }

private:
    Record before_;
    Record after_;
};

template <class Record>
EditChangePtr insertion(Record record)
{
    return std::make_unique<PresenceChange<Record>>(std::move(record), true);
}

template <class Record>
EditChangePtr removal(Record record)
{
    return std::make_unique<PresenceChange<Record>>(std::move(record), false);
}

template <class Record>
EditChangePtr assignment(std::type_identity_t<Record> before, Record after)
{
    return std::make_unique<AssignChange<Record>>(std::move(before), std::move(after));
}

} // namespace workbench
