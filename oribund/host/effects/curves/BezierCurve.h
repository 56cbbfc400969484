#pragma once

#include "oribund/host/effects/curves/CubicSegment.h"
#include "oribund/host/effects/curves/Graph1d.h"
#include "oribund/host/effects/curves/KeyStore.h"

namespace oribund
{

class Retiming;

/**
 * The keyframe graph of a number. From a keyframe to the next the curve is straight or, if the earlier keyframe is
 * smooth, the CubicSegment that the tangents span.
 *
 * An automatic tangent is chosen so that the curve never leaves the range between two neighbouring keyframes and is
 * level at its ends and turning points; both handles of a keyframe then lie on one line, a third of the way to the next
 * keyframes. Handles that are longer than the interval allows are shortened in the curve, not in the keyframe.
 */
class ORIBUND_API BezierCurve final : public Graph1d<double>
{
public:
    BezierCurve();
    ~BezierCurve() override;

    double evaluate(double time) const noexcept override;
    Keyframe keyframe(int index) const noexcept override;
    double valueAt(int index) const noexcept override;
    bool setKeyframeValue(int index, double value, ChangeKind kind = ChangeKind::Single) override;
    bool setKeyframe(int index, const Keyframe& keyframe, ChangeKind kind = ChangeKind::Single) override;

    /** The piece from a keyframe to the next one, a straight one included; the index is not the last one. */
    CubicSegment segment(int index) const noexcept;
    /** The handles as the curve uses them: automatic ones worked out, long ones shortened. `automatic` stays as set. */
    TangentHandle inHandle(int index) const noexcept;
    TangentHandle outHandle(int index) const noexcept;

    /** Whether a keyframe holds nothing but sensible numbers, and handles that point the right way. */
    static bool isUsable(const Keyframe& keyframe) noexcept;

    /** The value without keyframes. Not a change that anybody is told of. */
    void setRestValue(double value) noexcept { restValue_ = value; }

    double restValue() const noexcept { return restValue_; }

    /**
     * For undo: bare changes of this channel alone, found by time, not recorded. Only within a batch, at whose end all
     * channels have the same times again. False when there is no such keyframe, or one already.
     */
    bool restoreInserted(const Keyframe& keyframe);
    bool restoreErased(double time);
    bool restoreChanged(const Keyframe& keyframe);

private:
    friend class Graph1dBase;
    using Position = KeyStore::Position;

    double evaluateAfter(const Position& left, double time) const noexcept;
    void insertRaw(const Position& left, const KeyStore::Key& key, ChangeKind kind);
    void insertRaw(const Keyframe& keyframe, ChangeKind kind);
    /** A keyframe with that value, or with the curve's; `left` is lower() of the time. */
    void insertOnCurve(const Position& left, double time, const double* value, ChangeKind kind);
    void eraseRaw(int index, ChangeKind kind);
    void replaceRaw(int index, const Keyframe& keyframe, ChangeKind kind);
    void retimeRaw(const Retiming& retiming, ChangeKind kind);
    /** Whether these are its keyframes. */
    bool holds(std::span<const Keyframe> keyframes) const noexcept;
    void assignRaw(std::span<const Keyframe> keyframes, ChangeKind kind);
    void subdivideRaw(double time, ChangeKind kind);
    /** The automatic handle of a keyframe towards a neighbour as an explicit one that runs the same way. */
    TangentHandle automaticHandle(int index, int towards) const noexcept;

    Keyframe keyframeAt(const Position& position) const noexcept;
    CubicSegment segmentBetween(const Position& left, const Position& right) const noexcept;
    void refreshAround(const Position& position) noexcept;
    void refreshFromTo(int first, int last) noexcept;
    void refreshSlope(const Position& position) noexcept;
    static void refreshInRun(const KeyStore::Run& run, int i) noexcept;

    KeyStore keys_;
    double restValue_ = 0.0;
    BezierCurve* self_; // the one channel
};

} // namespace oribund
