#pragma once

#include "oribund/host/effects/curves/ChangeDescription.h"
#include "oribund/host/effects/curves/Keyframe.h"

namespace oribund
{

/** Receives each elementary change of a graph right after it was made, before observers are told. Must not edit. */
class iGraphJournal
{
public:
    virtual void keyframeInserted(int channel, const Keyframe& keyframe, ChangeKind kind) = 0;
    virtual void keyframeErased(int channel, const Keyframe& keyframe, ChangeKind kind) = 0;
    /** Value, type or tangents; a keyframe that moves is erased and inserted. */
    virtual void keyframeChanged(int channel, const Keyframe& before, const Keyframe& after, ChangeKind kind) = 0;
    /** Around a change of many keyframes that are not told one by one: the graph is as it was, then as it became. */
    virtual void manyKeyframesChanging(ChangeKind kind) = 0;
    virtual void manyKeyframesChanged(ChangeKind kind) = 0;
    /** Called for the outermost batch only. */
    virtual void batchStarted(BatchReason reason, ChangeKind kind) = 0;
    virtual void batchEnded(BatchReason reason, ChangeKind kind) = 0;

protected:
    ~iGraphJournal() = default;
};

} // namespace oribund
