#pragma once

#include "oribund/host/effects/params/ParamValue.h"
#include "workbench/model/EditData.h"

#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace oribund
{
class EffectValParamBase;
class Graph1dBase;
} // namespace oribund

namespace workbench
{

/**
 * What a step did to the keyframes of one parameter, as the difference between their state before and after. Single
 * keyframes are held one by one; from the first change of many on, all keyframes are held, once before and once after
 * the step. A finished step keeps of those that only moved the times alone.
 */
class KeyframesDelta
{
public:
    // Records what has just happened; of many keyframes, what is about to happen as well.
    void inserted(int channel, const oribund::Keyframe& keyframe);
    void erased(int channel, const oribund::Keyframe& keyframe);
    void changed(int channel, const oribund::Keyframe& before, const oribund::Keyframe& after);
    void manyChanging(const oribund::Graph1dBase& graph);
    void manyChanged(const oribund::Graph1dBase& graph);

    /** Nothing more will be recorded. */
    void finish();

    /** Brings the parameter, which has the other state, into the one before or after. Under a JournalSuspension. */
    void restore(oribund::EffectValParamBase& param, bool toAfter) const;

    bool isNull() const;

    /** At most one of the first three is above 0: what is moved may have been changed as well. */
    struct Counts {
        int moved = 0;
        int inserted = 0;
        int erased = 0;
        int changed = 0;
        double changedAt = 0.0; ///< time of the first that changed
    };

    Counts count() const;

    /** What the parameter's value, which has the state after, is or was at the time of a changed keyframe. */
    oribund::ParamValue valueAt(const oribund::EffectValParamBase& param, double fxTime, bool after) const;

private:
    using Channels = std::vector<ChannelData>;

    struct Sides {
        std::optional<oribund::Keyframe> before;
        std::optional<oribund::Keyframe> after;

        bool same() const { return before == after; }
    };

    struct Lists {
        Channels before;
        Channels after;
    };

    struct Times {
        std::vector<int> indices;
        std::vector<double> before;
        std::vector<double> after;
    };

    Sides& keyAt(int channel, double fxTime, const std::optional<oribund::Keyframe>& before);
    ChannelData beforeSingles(int channel, const ChannelData& now) const;
    void restoreSingles(oribund::EffectValParamBase& param, bool toAfter) const;
    Counts countSingles() const;
    static Counts countLists(const Lists& lists);
    static std::optional<Times> movesOf(const Lists& lists);

    std::map<std::pair<int, double>, Sides> singles_; ///< by channel and time; empty while there are lists
    std::optional<Lists> lists_;
    std::optional<Times> moves_; ///< takes the place of the lists
};

} // namespace workbench
