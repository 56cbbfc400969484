#include "oribund/host/effects/curves/BezierCurve.h"

#include <algorithm>

namespace oribund
{

namespace
{

using Point = KeyStore::Point;

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

void BezierCurve::subdivideRaw(double time, ChangeKind kind)
{
    Keyframe added;
    added.time = time;
    added.value = evaluate(time);
    const int left = lowerIndex(time);
    const int right = left + 1;
    if (left < 0) {
        // Automatic tangents are level towards a keyframe of the same value.
        if (!empty() && keyframe(0).in.automatic)
            added.type = typeAt(0);
        insertRaw(added, kind);
        return;
    }
    Keyframe before = keyframe(left);
    if (right == size()) {
        if (!before.out.automatic)
            before.type = KeyframeType::Linear;
        added.type = before.type;
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

} // namespace oribund
