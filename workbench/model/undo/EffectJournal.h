#pragma once

#include "oribund/host/effects/params/iParamJournal.h"
#include "workbench/model/EditData.h"

namespace workbench
{

class UndoStack;

/** Brings what happens to one effect's parameters into the undo stack. */
class EffectJournal : public oribund::iParamJournal
{
public:
    EffectJournal(UndoStack& undo, ObjectId effect)
        : undo_(undo)
        , effect_(effect)
    {
    }

    virtual ~EffectJournal() = default;

    void constantChanged(oribund::EffectValParamBase& param, const oribund::ParamValue& before,
                         const oribund::ParamValue& after, oribund::ChangeKind kind) override;
    void keyframeInserted(oribund::EffectValParamBase& param, int channel, const oribund::Keyframe& keyframe,
                          oribund::ChangeKind kind) override;
    void keyframeErased(oribund::EffectValParamBase& param, int channel, const oribund::Keyframe& keyframe,
                        oribund::ChangeKind kind) override;
    void keyframeChanged(oribund::EffectValParamBase& param, int channel, const oribund::Keyframe& before,
                         const oribund::Keyframe& after, oribund::ChangeKind kind) override;
    void manyKeyframesChanging(oribund::EffectValParamBase& param, oribund::ChangeKind kind) override;
    void manyKeyframesChanged(oribund::EffectValParamBase& param, oribund::ChangeKind kind) override;
    void functionTypeChanged(oribund::EffectValParamBase& param, oribund::EffectValParamFnType before,
                             oribund::EffectValParamFnType after, oribund::ChangeKind kind) override;
    void batchStarted(oribund::EffectValParamBase& param, oribund::BatchReason reason,
                      oribund::ChangeKind kind) override;
    void batchEnded(oribund::EffectValParamBase& param, oribund::BatchReason reason, oribund::ChangeKind kind) override;

private:
    UndoStack& undo_;
    ObjectId effect_;
};

} // namespace workbench
