#include "oribund/host/effects/curves/Graph1dBase.h"

#include "oribund/host/base/Numeric.h"
#include "oribund/host/effects/curves/BezierCurve.h"
#include "oribund/host/effects/curves/Retiming.h"
#include "oribund/host/effects/curves/iGraphJournal.h"

#include <array>
#include <cassert>
#include <cmath>

namespace oribund
{

void Graph1dBase::setChannels(std::span<BezierCurve* const> channels)
{
    assert(!channels.empty() && channels.size() <= kMaxChannels);
    channels_ = channels;
    times_ = &channels.front()->keys_;
    for (std::size_t i = 0; i < channels.size(); ++i) {
        if (channels[i] != this) {
            channels[i]->parent_ = this;
            channels[i]->channelIndex_ = static_cast<int>(i);
        }
    }
}

BezierCurve& Graph1dBase::curve(int index) noexcept
{
    return *channels_[static_cast<std::size_t>(index)];
}

const BezierCurve& Graph1dBase::curve(int index) const noexcept
{
    return *channels_[static_cast<std::size_t>(index)];
}

Graph1d<double>& Graph1dBase::channel(int index) noexcept
{
    return curve(index);
}

const Graph1d<double>& Graph1dBase::channel(int index) const noexcept
{
    return curve(index);
}

int Graph1dBase::size() const noexcept
{
    return keys().size();
}

double Graph1dBase::timeAt(int index) const noexcept
{
    return keys().time(keys().position(index));
}

KeyframeType Graph1dBase::typeAt(int index) const noexcept
{
    return keys().point(keys().position(index)).isSmooth() ? KeyframeType::Smooth : KeyframeType::Linear;
}

int Graph1dBase::lowerIndex(double time) const noexcept
{
    return keys().index(keys().lower(time));
}

int Graph1dBase::nearestIndex(double time) const noexcept
{
    const int lower = lowerIndex(time);
    if (lower < 0)
        return empty() ? -1 : 0;
    const bool nextIsNearer = exists(lower + 1) && timeAt(lower + 1) - time < time - timeAt(lower);
    return nextIsNearer ? lower + 1 : lower;
}

double Graph1dBase::anyTimeFrom(double from, double enough) const noexcept
{
    return keys().anyTimeFrom(from, enough);
}

int Graph1dBase::indexAt(double time) const noexcept
{
    const KeyStore::Position lower = keys().lower(time);
    const double before = lower.valid() ? time - keys().time(lower) : kMaxTime;
    if (before == 0.0)
        return keys().index(lower);
    const KeyStore::Position next = lower.valid() ? keys().next(lower) : keys().begin();
    const double after = next.valid() ? keys().time(next) - time : kMaxTime;
    if (before <= kValueTolerance && before <= after)
        return keys().index(lower);
    return after <= kValueTolerance ? keys().index(next) : -1;
}

bool Graph1dBase::isFree(double time, int except) const noexcept
{
    const int lower = lowerIndex(time);
    for (const int index : {lower, lower + 1}) {
        if (index != except && exists(index) && valEqualsVal(timeAt(index), time))
            return false;
    }
    return true;
}

int Graph1dBase::addKeyframe(double time, ChangeKind kind)
{
    return parent_ ? parent_->addKeyframe(time, kind) : insertInAll(time, nullptr, kind);
}

int Graph1dBase::addKeyframeWithValues(double time, std::span<const double> values, ChangeKind kind)
{
    if (parent_ || values.size() != channels_.size())
        return -1;
    for (const double value : values) {
        if (!usableValue(value))
            return -1;
    }
    return insertInAll(time, values.data(), kind);
}

int Graph1dBase::insertInAll(double time, const double* values, ChangeKind kind)
{
    if (!usableTime(time))
        return -1;
    // Keyframes mostly come in order.
    KeyStore::Position left = keys().last();
    if (left.valid() && time < keys().time(left))
        left = keys().lower(time);
    const KeyStore::Position right = left.valid() ? keys().next(left) : keys().begin();
    if ((left.valid() && time - keys().time(left) <= kValueTolerance) ||
        (right.valid() && keys().time(right) - time <= kValueTolerance))
        return -1;
    const int index = keys().index(left) + 1;
    if (channels_.size() == 1) {
        channels_.front()->insertOnCurve(left, time, values, kind);
        return index;
    }
    const GraphBatch batch(*this, BatchReason::AddKeyframe, BatchReason::EndAddKeyframe, kind);
    for (std::size_t i = 0; i < channels_.size(); ++i) {
        BezierCurve& curve = *channels_[i];
        curve.insertOnCurve(curve.keys_.lower(time), time, values ? values + i : nullptr, kind);
    }
    return index;
}

int Graph1dBase::subdivide(double time, ChangeKind kind)
{
    if (parent_)
        return parent_->subdivide(time, kind);
    if (!usableTime(time) || !isFree(time))
        return -1;
    const int index = lowerIndex(time) + 1;
    const GraphBatch batch(*this, BatchReason::AddKeyframe, BatchReason::EndAddKeyframe, kind);
    for (BezierCurve* const curve : channels_)
        curve->subdivideRaw(time, kind);
    return index;
}

bool Graph1dBase::removeKeyframe(int index, ChangeKind kind)
{
    if (parent_)
        return parent_->removeKeyframe(index, kind);
    if (!exists(index))
        return false;
    if (channels_.size() == 1) {
        channels_.front()->eraseRaw(index, kind);
        return true;
    }
    const GraphBatch batch(*this, BatchReason::Remove, BatchReason::Remove, kind);
    for (BezierCurve* const curve : channels_)
        curve->eraseRaw(index, kind);
    return true;
}

int Graph1dBase::moveKeyframe(int index, double newTime, ChangeKind kind)
{
    if (parent_)
        return parent_->moveKeyframe(index, newTime, kind);
    if (!exists(index) || !usableTime(newTime) || !isFree(newTime, index))
        return -1;
    if (timeAt(index) == newTime)
        return index;
    const int lower = lowerIndex(newTime);
    const GraphBatch batch(*this, BatchReason::Move, BatchReason::Move, kind);
    for (BezierCurve* const curve : channels_) {
        Keyframe keyframe = curve->keyframe(index);
        keyframe.time = newTime;
        curve->eraseRaw(index, kind);
        curve->insertRaw(keyframe, kind);
    }
    return lower < index ? lower + 1 : lower;
}

bool Graph1dBase::setKeyframeTimes(std::span<const int> indices, std::span<const double> times, ChangeKind kind)
{
    if (parent_)
        return parent_->setKeyframeTimes(indices, times, kind);
    if (!Retiming(keys(), indices, times).fits())
        return false;
    if (Retiming(keys(), indices, times).changesNothing())
        return true;
    const bool together = !Retiming(keys(), indices, times).isSparse();
    const GraphBatch batch(*this, BatchReason::Move, BatchReason::Move, kind);
    if (together && journal_)
        journal_->manyKeyframesChanging(kind);
    for (BezierCurve* const curve : channels_)
        curve->retimeRaw(Retiming(curve->keys_, indices, times), kind);
    if (together && journal_)
        journal_->manyKeyframesChanged(kind);
    return true;
}

bool Graph1dBase::setKeyframeType(int index, KeyframeType type, ChangeKind kind)
{
    if (parent_)
        return parent_->setKeyframeType(index, type, kind);
    if (!exists(index))
        return false;
    const GraphBatch batch(*this, BatchReason::Reshape, BatchReason::Reshape, kind);
    for (BezierCurve* const curve : channels_) {
        Keyframe keyframe = curve->keyframe(index);
        keyframe.type = type;
        curve->replaceRaw(index, keyframe, kind);
    }
    return true;
}

bool Graph1dBase::setKeyframeValues(int index, std::span<const double> values, ChangeKind kind)
{
    if (!exists(index) || values.size() != channels_.size())
        return false;
    for (const double value : values) {
        if (!usableValue(value))
            return false;
    }
    if (channels_.size() == 1)
        return channels_.front()->setKeyframeValue(index, values.front(), kind);
    const GraphBatch batch(*this, BatchReason::SetValue, BatchReason::SetValue, kind);
    for (std::size_t i = 0; i < values.size(); ++i)
        channels_[i]->setKeyframeValue(index, values[i], kind);
    return true;
}

std::vector<Keyframe> Graph1dBase::keyframes(int channel) const
{
    const BezierCurve& from = curve(channel);
    std::vector<Keyframe> all;
    all.reserve(static_cast<std::size_t>(size()));
    for (auto position = from.keys_.begin(); position.valid(); position = from.keys_.next(position))
        all.push_back(from.keyframeAt(position));
    return all;
}

bool Graph1dBase::sameTimes(std::span<const std::vector<Keyframe>> channels) const noexcept
{
    if (channels.size() != channels_.size())
        return false;
    const std::vector<Keyframe>& first = channels.front();
    for (const std::vector<Keyframe>& channel : channels) {
        if (channel.size() != first.size())
            return false;
        for (std::size_t i = 0; i < channel.size(); ++i) {
            const bool ascends = i == 0 || channel[i].time - channel[i - 1].time > kValueTolerance;
            if (!ascends || channel[i].time != first[i].time || !BezierCurve::isUsable(channel[i]))
                return false;
        }
    }
    return true;
}

bool Graph1dBase::setKeyframes(std::span<const std::vector<Keyframe>> channels, ChangeKind kind)
{
    if (parent_ || !sameTimes(channels))
        return false;
    bool same = true;
    for (std::size_t i = 0; i < channels.size(); ++i)
        same = same && channels_[i]->holds(channels[i]);
    if (same)
        return true;
    const GraphBatch batch(*this, BatchReason::Replace, BatchReason::Replace, kind);
    if (journal_)
        journal_->manyKeyframesChanging(kind);
    for (std::size_t i = 0; i < channels.size(); ++i)
        channels_[i]->assignRaw(channels[i], kind);
    if (journal_)
        journal_->manyKeyframesChanged(kind);
    return true;
}

bool Graph1dBase::removeAllKeyframes(ChangeKind kind)
{
    if (parent_)
        return parent_->removeAllKeyframes(kind);
    const std::array<std::vector<Keyframe>, kMaxChannels> none;
    return setKeyframes(std::span(none.data(), channels_.size()), kind);
}

} // namespace oribund
