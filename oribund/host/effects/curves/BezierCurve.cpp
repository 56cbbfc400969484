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

// Rounding may put a handle a hair on the wrong side of its keyframe.
TangentHandle outgoing(const CubicSegment& segment) noexcept
{
    const auto& points = segment.points;
    return {std::max(points[1].time - points[0].time, 0.0), points[1].value - points[0].value, false};
}

TangentHandle incoming(const CubicSegment& segment) noexcept
{
    const auto& points = segment.points;
    return {std::min(points[2].time - points[3].time, 0.0), points[2].value - points[3].value, false};
}

/**
 * The slope at a keyframe between two intervals: the weighted harmonic mean of the slopes of both, level where they
 * turn or one of them is level. It never exceeds three times the lesser slope, which keeps the curve monotone.
 */
double monotoneSlope(double h0, double rise0, double h1, double rise1) noexcept
{
    const double product = rise0 * rise1;
    if (!(product > 0.0))
        return 0.0;
    const double w0 = h0 + 2.0 * h1;
    const double w1 = 2.0 * h0 + h1;
    return (w0 + w1) * product / (w0 * h0 * rise1 + w1 * h1 * rise0);
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

CubicSegment BezierCurve::segmentBetween(const Position& left, const Position& right) const noexcept
{
    const Point& p0 = keys_.point(left);
    const Point& p1 = keys_.point(right);
    const CubicSegment::Point start{keys_.time(left), p0.value};
    const CubicSegment::Point end{keys_.time(right), p1.value};
    const double length = end.time - start.time;
    if (!p0.isSmooth()) {
        const double third = (end.value - start.value) / 3.0;
        return {{start,
                 {start.time + length / 3.0, start.value + third},
                 {end.time - length / 3.0, end.value - third},
                 end}};
    }

    CubicSegment::Point out{p0.outDt, p0.outDv};
    CubicSegment::Point in{p1.inDt, p1.inDv};
    if ((p0.flags & KeyStore::kOutAutomatic) != 0)
        out = {length / 3.0, out.value * length / 3.0};
    if ((p1.flags & KeyStore::kInAutomatic) != 0)
        in = {-length / 3.0, -in.value * length / 3.0};
    // Handles that reach past each other would make the curve run back in time.
    if (const double reach = out.time - in.time; reach > length) {
        const double fit = length / reach;
        out = {out.time * fit, out.value * fit};
        in = {in.time * fit, in.value * fit};
    }
    const double outTime = std::min(start.time + out.time, end.time);
    return {{start,
             {outTime, start.value + out.value},
             {std::max(end.time + in.time, outTime), end.value + in.value},
             end}};
}

CubicSegment BezierCurve::segment(int index) const noexcept
{
    const Position left = keys_.position(index);
    return segmentBetween(left, keys_.next(left));
}

TangentHandle BezierCurve::outHandle(int index) const noexcept
{
    TangentHandle handle = keyframe(index).out;
    if (index + 1 < size()) {
        const bool automatic = handle.automatic;
        handle = outgoing(segment(index));
        handle.automatic = automatic;
    }
    return handle;
}

TangentHandle BezierCurve::inHandle(int index) const noexcept
{
    TangentHandle handle = keyframe(index).in;
    if (index > 0) {
        const bool automatic = handle.automatic;
        handle = incoming(segment(index - 1));
        handle.automatic = automatic;
    }
    return handle;
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

void BezierCurve::subdivideRaw(double time, ChangeKind kind)
{
    Keyframe added;
    added.time = time;
    added.value = evaluate(time);
    const int left = lowerIndex(time);
    const int right = left + 1;
    if (left < 0) {
        insertRaw(added, kind);
        return;
    }
    Keyframe before = keyframe(left);
    if (right == size()) {
        // The level stretch behind the last keyframe takes its shape from here on.
        before.type = KeyframeType::Linear;
        replaceRaw(left, before, kind);
        insertRaw(added, kind);
        return;
    }

    // A new neighbour would turn automatic tangents: those that shape anything are held where they are.
    Keyframe after = keyframe(right);
    if (before.in.automatic && left > 0 && typeAt(left - 1) == KeyframeType::Smooth)
        before.in = automaticHandle(left, left - 1);
    if (after.out.automatic && right + 1 < size() && after.type == KeyframeType::Smooth)
        after.out = automaticHandle(right, right + 1);
    if (before.type == KeyframeType::Smooth) {
        const auto [first, second] = segment(left).split(time);
        before.out = outgoing(first);
        added.in = incoming(first);
        added.out = outgoing(second);
        after.in = incoming(second);
        added.type = KeyframeType::Smooth;
    }
    replaceRaw(left, before, kind);
    replaceRaw(right, after, kind);
    insertRaw(added, kind);
}

TangentHandle BezierCurve::automaticHandle(int index, int towards) const noexcept
{
    const Point& point = keys_.point(keys_.position(index));
    const double dt = (timeAt(towards) - timeAt(index)) / 3.0;
    return {dt, dt * (towards < index ? point.inDv : point.outDv), false};
}

void BezierCurve::refreshAround(const Position& position) noexcept
{
    if (keys_.smoothCount() == 0)
        return;
    const KeyStore::Run run = keys_.run(position.chunk);
    const int offset = position.offset;
    if ((offset >= 2 || run.first) && (offset + 2 < run.count || run.last)) {
        for (int i = std::max(offset - 1, 0); i <= std::min(offset + 1, run.count - 1); ++i)
            refreshInRun(run, i);
        return;
    }
    refreshSlope(position);
    if (const Position previous = keys_.previous(position); previous.valid())
        refreshSlope(previous);
    if (const Position next = keys_.next(position); next.valid())
        refreshSlope(next);
}

void BezierCurve::refreshFromTo(int first, int last) noexcept
{
    if (keys_.smoothCount() == 0)
        return;
    first = std::max(first, 0);
    const int count = std::min(last, size() - 1) - first + 1;
    Position position = keys_.position(first);
    for (int i = 0; i < count; ++i, position = keys_.next(position)) {
        const KeyStore::Run run = keys_.run(position.chunk);
        if (position.offset > 0 && position.offset + 1 < run.count)
            refreshInRun(run, position.offset);
        else
            refreshSlope(position);
    }
}

void BezierCurve::refreshSlope(const Position& position) noexcept
{
    // Neighbours may lie in other chunks: a run of its own for the three of them.
    double times[3];
    Point points[3];
    int count = 0;
    int own = 0;
    for (const Position& p : {keys_.previous(position), position, keys_.next(position)}) {
        if (!p.valid())
            continue;
        own = p.chunk == position.chunk && p.offset == position.offset ? count : own;
        times[count] = keys_.time(p);
        points[count++] = keys_.point(p);
    }
    refreshInRun({times, points, count, true, true}, own);
    keys_.setPoint(position, points[own]);
}

void BezierCurve::refreshInRun(const KeyStore::Run& run, int i) noexcept
{
    Point& point = run.points[i];
    const bool shapesIn = (point.flags & KeyStore::kInAutomatic) != 0 && i > 0 && run.points[i - 1].isSmooth();
    const bool shapesOut = (point.flags & KeyStore::kOutAutomatic) != 0 && point.isSmooth();
    if (!shapesIn && !shapesOut)
        return;

    // Level at the ends, where the curve goes over into a constant.
    double slope = 0.0;
    if (i > 0 && i + 1 < run.count) {
        slope = monotoneSlope(run.times[i] - run.times[i - 1], point.value - run.points[i - 1].value,
                              run.times[i + 1] - run.times[i], run.points[i + 1].value - point.value);
    }
    if (shapesIn)
        point.inDv = slope;
    if (shapesOut)
        point.outDv = slope;
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
