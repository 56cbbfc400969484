#pragma once

#include "oribund/host/base/LightweightString.h"
#include "oribund/host/effects/EffectValParamBase.h"
#include "workbench/model/undo/EditChange.h"

#include <map>
#include <optional>
#include <utility>

namespace workbench
{

/**
 * What a step did to one parameter, as the difference between its state before and after. However often something was
 * changed in between, it is held once: a drag over a hundred positions is as small as a single change.
 */
class ParamDelta : public EditChange
{
public:
    ParamDelta(ObjectId effect, const oribund::IdStamp& param);

    bool concerns(ObjectId effect, const oribund::IdStamp& param) const { return effect_ == effect && param_ == param; }

    // Records what has just happened.
    void constantChanged(const oribund::ParamValue& before, const oribund::ParamValue& after);
    void functionTypeChanged(oribund::EffectValParamFnType before, oribund::EffectValParamFnType after);
    void keyframeInserted(int channel, const oribund::Keyframe& keyframe);
    void keyframeErased(int channel, const oribund::Keyframe& keyframe);
    void keyframeChanged(int channel, const oribund::Keyframe& before, const oribund::Keyframe& after);

    void apply(Timeline& timeline) override;
    void revert(Timeline& timeline) override;

    bool isAssignment() const override { return true; }

    bool isNull() const override;
    oribund::EditModification modification() const override;

    /** "Saturation 12 % to 18 %"; the parameter is in the state after. */
    oribund::WString describe(const Timeline& timeline) const;

private:
    template <class T>
    struct Sides {
        T before;
        T after;

        bool same() const { return before == after; }
    };

    using KeySides = Sides<std::optional<oribund::Keyframe>>;

    struct KeyCounts {
        int inserted = 0;
        int erased = 0;
        int changed = 0;
        double changedAt = 0.0;
    };

    template <class T>
    static void record(std::optional<Sides<T>>& sides, const T& before, const T& after);

    KeySides& keyAt(int channel, double time, const std::optional<oribund::Keyframe>& before);
    void restore(Timeline& timeline, bool after) const;
    KeyCounts countKeys() const;
    oribund::ParamValue valueAt(const oribund::EffectValParamBase& param, double time, bool after) const;

    ObjectId effect_;
    oribund::IdStamp param_;
    std::optional<Sides<oribund::ParamValue>> constant_;
    std::optional<Sides<oribund::EffectValParamFnType>> fnType_;
    std::map<std::pair<int, double>, KeySides> keys_; ///< by channel and time
};

} // namespace workbench
