#pragma once

#include "oribund/host/base/LightweightString.h"
#include "oribund/host/effects/params/EffectValParamBase.h"
#include "workbench/model/undo/EditChange.h"
#include "workbench/model/undo/KeyframesDelta.h"

#include <optional>

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

    // Records what has just happened.
    void constantChanged(const oribund::ParamValue& before, const oribund::ParamValue& after);
    void functionTypeChanged(oribund::EffectValParamFnType before, oribund::EffectValParamFnType after);

    /** For what happens to keyframes. */
    KeyframesDelta& keyframes() { return keyframes_; }

    void apply(Timeline& timeline) override;
    void revert(Timeline& timeline) override;

    bool isAssignment() const override { return true; }

    bool isNull() const override;

    void finish() override { keyframes_.finish(); }

    oribund::EditModification modification() const override;

    /** "Saturation 12 % to 18 %"; the parameter is in the state after. */
    oribund::WString describe(const Timeline& timeline) const;

    /** How many keyframes were moved; 0 where something else was done. */
    int movedKeyframes() const;

private:
    template <class T>
    struct Sides {
        T before;
        T after;

        bool same() const { return before == after; }
    };

    template <class T>
    static void record(std::optional<Sides<T>>& sides, const T& before, const T& after);

    void restore(Timeline& timeline, bool after) const;

    ObjectId effect_;
    oribund::IdStamp param_;
    std::optional<Sides<oribund::ParamValue>> constant_;
    std::optional<Sides<oribund::EffectValParamFnType>> fnType_;
    KeyframesDelta keyframes_;
};

} // namespace workbench
