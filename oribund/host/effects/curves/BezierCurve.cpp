#include "oribund/host/effects/curves/BezierCurve.h"

#include "oribund/host/base/Numeric.h"
#include "oribund/host/effects/curves/Retiming.h"
#include "oribund/host/effects/curves/iGraphJournal.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace oribund
{

namespace
{

using Point = KeyStore::Point;

TangentHandle usedHandle(double dt, double dv, bool automatic) noexcept
{
    return automatic ? TangentHandle{} : TangentHandle{dt, dv, false};
}

/** Of a normalised keyframe. */
KeyStore::Key toKey(const Keyframe& keyframe) noexcept
{
    unsigned flags = keyframe.type == KeyframeType::Smooth ? KeyStore::kSmooth : 0u;
    if (keyframe.in.automatic)
        flags |= KeyStore::kInAutomatic;
    if (keyframe.out.automatic)
        flags |= KeyStore::kOutAutomatic;
    return {keyframe.time, {keyframe.value, keyframe.in.dt, keyframe.in.dv, keyframe.out.dt, keyframe.out.dv, flags}};
}

/** The keyframe without what an automatic handle does not use. */
Keyframe normalised(Keyframe keyframe) noexcept
{
    keyframe.in = usedHandle(keyframe.in.dt, keyframe.in.dv, keyframe.in.automatic);
    keyframe.out = usedHandle(keyframe.out.dt, keyframe.out.dv, keyframe.out.automatic);
    return keyframe;
}

} // namespace

BezierCurve::BezierCurve()
    : self_(this)
{
    setChannels(std::span(&self_, 1));
}

BezierCurve::~BezierCurve()
{
    announceEnd();
}

bool BezierCurve::isUsable(const Keyframe& keyframe) noexcept
{
    const auto usableHandle = [](const TangentHandle& handle, double direction) {
        const double dt = handle.dt * direction;
        return handle.automatic || (dt >= 0.0 && usableTime(dt) && usableValue(handle.dv));
    };
    return usableTime(keyframe.time) && usableValue(keyframe.value) && usableHandle(keyframe.in, -1.0) &&
           usableHandle(keyframe.out, 1.0);
}

double BezierCurve::evaluate(double time) const noexcept
{
    return evaluateAfter(keys_.lower(time), time);
}

double BezierCurve::evaluateAfter(const Position& left, double time) const noexcept
{
    if (!left.valid())
        return keys_.size() == 0 ? restValue_ : keys_.value(keys_.begin());
    const Position right = keys_.next(left);
    const Point& p0 = keys_.point(left);
    if (!right.valid())
        return p0.value;

    const Point& p1 = keys_.point(right);
    const double t0 = keys_.time(left);
    const double length = keys_.time(right) - t0;
    const double rise = p1.value - p0.value;
    const double u = (time - t0) / length;
    if (!p0.isSmooth())
        return p0.value + rise * u;
    if ((p0.flags & KeyStore::kOutAutomatic) == 0 || (p1.flags & KeyStore::kInAutomatic) == 0)
        return segmentBetween(left, right).evaluate(time);
    // Both handles a third of the way: time is proportional to the curve's parameter, and nothing has to be solved.
    const double m0 = p0.outDv * length;
    const double m1 = p1.inDv * length;
    return p0.value + u * (m0 + u * (3.0 * rise - 2.0 * m0 - m1 + u * (m0 + m1 - 2.0 * rise)));
}

double BezierCurve::valueAt(int index) const noexcept
{
    return keys_.value(keys_.position(index));
}

Keyframe BezierCurve::keyframe(int index) const noexcept
{
    return keyframeAt(keys_.position(index));
}

Keyframe BezierCurve::keyframeAt(const Position& position) const noexcept
{
    const Point& point = keys_.point(position);
    Keyframe keyframe;
    keyframe.time = keys_.time(position);
    keyframe.value = point.value;
    keyframe.type = point.isSmooth() ? KeyframeType::Smooth : KeyframeType::Linear;
    keyframe.in = usedHandle(point.inDt, point.inDv, (point.flags & KeyStore::kInAutomatic) != 0);
    keyframe.out = usedHandle(point.outDt, point.outDv, (point.flags & KeyStore::kOutAutomatic) != 0);
    return keyframe;
}

bool BezierCurve::setKeyframeValue(int index, double value, ChangeKind kind)
{
    if (!exists(index) || !usableValue(value))
        return false;
    const Position position = keys_.position(index);
    const double before = keys_.value(position);
    if (before == value)
        return true;
    keys_.setValue(position, value);
    refreshAround(position);
    if (journal()) {
        const Keyframe after = keyframeAt(position);
        Keyframe was = after;
        was.value = before;
        journal()->keyframeChanged(channelIndex(), was, after, kind);
    }
    changed(ownMask(), BatchReason::SetValue, kind);
    return true;
}

bool BezierCurve::setKeyframe(int index, const Keyframe& keyframe, ChangeKind kind)
{
    if (!exists(index) || !isUsable(keyframe) || !isFree(keyframe.time, index))
        return false;
    const GraphBatch batch(*this, BatchReason::Reshape, BatchReason::Reshape, kind);
    index = moveKeyframe(index, keyframe.time, kind);
    replaceRaw(index, keyframe, kind);
    return true;
}

void BezierCurve::insertRaw(const Position& left, const KeyStore::Key& key, ChangeKind kind)
{
    const Position position = keys_.insertAfter(left, key);
    refreshAround(position);
    if (journal())
        journal()->keyframeInserted(channelIndex(), keyframeAt(position), kind);
    changed(ownMask(), BatchReason::EndAddKeyframe, kind);
}

void BezierCurve::insertRaw(const Keyframe& keyframe, ChangeKind kind)
{
    insertRaw(keys_.lower(keyframe.time), toKey(normalised(keyframe)), kind);
}

void BezierCurve::insertOnCurve(const Position& left, double time, const double* value, ChangeKind kind)
{
    KeyStore::Key key;
    key.time = time;
    key.point.value = value ? *value : evaluateAfter(left, time);
    key.point.flags = KeyStore::kInAutomatic | KeyStore::kOutAutomatic;
    if (const Position model = left.valid() ? left : keys_.begin(); model.valid())
        key.point.flags |= keys_.point(model).flags & KeyStore::kSmooth;
    insertRaw(left, key, kind);
}

void BezierCurve::eraseRaw(int index, ChangeKind kind)
{
    const Position position = keys_.position(index);
    const auto recorded = journal() ? std::optional(keyframeAt(position)) : std::nullopt;
    keys_.erase(position);
    if (keys_.smoothCount() > 0)
        refreshAround(keys_.position(std::max(index - 1, 0)));
    if (recorded)
        journal()->keyframeErased(channelIndex(), *recorded, kind);
    changed(ownMask(), BatchReason::Remove, kind);
}

void BezierCurve::replaceRaw(int index, const Keyframe& keyframe, ChangeKind kind)
{
    const Position position = keys_.position(index);
    const Keyframe before = keyframeAt(position);
    Keyframe after = normalised(keyframe);
    after.time = before.time;
    if (before == after)
        return;
    keys_.setPoint(position, toKey(after).point);
    refreshAround(position);
    if (journal())
        journal()->keyframeChanged(channelIndex(), before, after, kind);
    changed(ownMask(), BatchReason::Reshape, kind);
}

void BezierCurve::retimeRaw(const Retiming& retiming, ChangeKind kind)
{
    iGraphJournal* const each = retiming.isSparse() ? journal() : nullptr;
    if (each)
        retiming.forEach([&](const Position& position, double) {
            each->keyframeErased(channelIndex(), keyframeAt(position), kind);
        });
    retiming.forEach([this](const Position& position, double time) { keys_.setTime(position, time); });
    if (each)
        retiming.forEach([&](const Position& position, double) {
            each->keyframeInserted(channelIndex(), keyframeAt(position), kind);
        });
    if (retiming.isSparse())
        retiming.forEach([this](const Position& position, double) { refreshAround(position); });
    else
        refreshFromTo(retiming.indices().front() - 1, retiming.indices().back() + 1);
    changed(ownMask(), BatchReason::Move, kind);
}

bool BezierCurve::holds(std::span<const Keyframe> keyframes) const noexcept
{
    if (std::ssize(keyframes) != size())
        return false;
    Position position = keys_.begin();
    for (const Keyframe& keyframe : keyframes) {
        if (keyframeAt(position) != normalised(keyframe))
            return false;
        position = keys_.next(position);
    }
    return true;
}

void BezierCurve::assignRaw(std::span<const Keyframe> keyframes, ChangeKind kind)
{
    if (holds(keyframes))
        return;
    std::vector<KeyStore::Key> keys;
    keys.reserve(keyframes.size());
    for (const Keyframe& keyframe : keyframes)
        keys.push_back(toKey(normalised(keyframe)));
    keys_.assign(keys);
    refreshFromTo(0, size() - 1);
    changed(ownMask(), BatchReason::Replace, kind);
}

bool BezierCurve::restoreInserted(const Keyframe& keyframe)
{
    const Position left = keys_.lower(keyframe.time);
    if (!isUsable(keyframe) || (left.valid() && keys_.time(left) == keyframe.time))
        return false;
    insertRaw(keyframe, ChangeKind::Single);
    return true;
}

bool BezierCurve::restoreErased(double time)
{
    const Position position = keys_.lower(time);
    if (!position.valid() || keys_.time(position) != time)
        return false;
    eraseRaw(keys_.index(position), ChangeKind::Single);
    return true;
}

bool BezierCurve::restoreChanged(const Keyframe& keyframe)
{
    const Position position = keys_.lower(keyframe.time);
    if (!isUsable(keyframe) || !position.valid() || keys_.time(position) != keyframe.time)
        return false;
    replaceRaw(keys_.index(position), keyframe, ChangeKind::Single);
    return true;
}

} // namespace oribund
