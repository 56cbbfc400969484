#pragma once

#include "oribund/host/effects/curves/ChangeDescription.h"
#include "oribund/host/effects/curves/Keyframe.h"
#include "oribund/host/effects/params/ParamValue.h"

namespace oribund
{

class EffectValParamBase;
enum class EffectValParamFnType : int;

/**
 * With which a host records what a user does to parameters, to undo it. Receives each elementary change before
 * observers are told of it (use the arguments: the constant itself is stored only then); each but the change of many
 * keyframes is small whatever the size of the graph. Undone and redone through the restore functions of
 * EffectValParamBase under a JournalSuspension. Must not edit the parameter from these calls.
 */
class iParamJournal
{
public:
    virtual void constantChanged(EffectValParamBase& param, const ParamValue& before, const ParamValue& after,
                                 ChangeKind kind) = 0;
    virtual void keyframeInserted(EffectValParamBase& param, int channel, const Keyframe& keyframe,
                                  ChangeKind kind) = 0;
    virtual void keyframeErased(EffectValParamBase& param, int channel, const Keyframe& keyframe, ChangeKind kind) = 0;
    /** Value, type or tangents; a keyframe that moves is erased and inserted. */
    virtual void keyframeChanged(EffectValParamBase& param, int channel, const Keyframe& before, const Keyframe& after,
                                 ChangeKind kind) = 0;
    /** Around a change of many keyframes, in a batch, that are not told one by one: the parameter's graph is as it was,
        then as it became. Costs what the journal does with it. */
    virtual void manyKeyframesChanging(EffectValParamBase& param, ChangeKind kind) = 0;
    virtual void manyKeyframesChanged(EffectValParamBase& param, ChangeKind kind) = 0;
    virtual void functionTypeChanged(EffectValParamBase& param, EffectValParamFnType before, EffectValParamFnType after,
                                     ChangeKind kind) = 0;

    /** Around what is one edit; changes in between may carry other kinds than the batch, whose kind counts. */
    virtual void batchStarted(EffectValParamBase& param, BatchReason reason, ChangeKind kind) = 0;
    virtual void batchEnded(EffectValParamBase& param, BatchReason reason, ChangeKind kind) = 0;

protected:
    ~iParamJournal() = default;
};

} // namespace oribund
