#include "workbench/model/undo/EffectJournal.h"

#include "workbench/model/undo/UndoStack.h"

namespace workbench
{

using oribund::BatchReason;
using oribund::ChangeKind;
using oribund::EffectValParamBase;
using oribund::Keyframe;

void EffectJournal::constantChanged(EffectValParamBase& param, const oribund::ParamValue& before,
                                    const oribund::ParamValue& after, ChangeKind kind)
{
    undo_.paramChange(effect_, param.id(), kind).constantChanged(before, after);
}

void EffectJournal::keyframeInserted(EffectValParamBase& param, int channel, const Keyframe& keyframe, ChangeKind kind)
{
    undo_.paramChange(effect_, param.id(), kind).keyframes().inserted(channel, keyframe);
}

void EffectJournal::keyframeErased(EffectValParamBase& param, int channel, const Keyframe& keyframe, ChangeKind kind)
{
    undo_.paramChange(effect_, param.id(), kind).keyframes().erased(channel, keyframe);
}

void EffectJournal::keyframeChanged(EffectValParamBase& param, int channel, const Keyframe& before,
                                    const Keyframe& after, ChangeKind kind)
{
    undo_.paramChange(effect_, param.id(), kind).keyframes().changed(channel, before, after);
}

void EffectJournal::manyKeyframesChanging(EffectValParamBase& param, ChangeKind kind)
{
    undo_.paramChange(effect_, param.id(), kind).keyframes().manyChanging(*param.graph());
}

void EffectJournal::manyKeyframesChanged(EffectValParamBase& param, ChangeKind kind)
{
    undo_.paramChange(effect_, param.id(), kind).keyframes().manyChanged(*param.graph());
}

void EffectJournal::functionTypeChanged(EffectValParamBase& param, oribund::EffectValParamFnType before,
                                        oribund::EffectValParamFnType after, ChangeKind kind)
{
    undo_.paramChange(effect_, param.id(), kind).functionTypeChanged(before, after);
}

void EffectJournal::batchStarted(EffectValParamBase&, BatchReason, ChangeKind kind)
{
    undo_.beginParamBatch(kind);
}

void EffectJournal::batchEnded(EffectValParamBase&, BatchReason, ChangeKind)
{
    undo_.endParamBatch();
}

} // namespace workbench
