#include "oribund/host/effects/curves/Graph1dBase.h"

#include "oribund/host/effects/curves/BezierCurve.h"
#include "oribund/host/effects/curves/iGraphJournal.h"

#include <utility>

namespace oribund
{

Graph1dBase::~Graph1dBase()
{
    if (gone_)
        *gone_ = true;
}

void Graph1dBase::announceEnd()
{
    Change change;
    change.graph = this;
    notifier_.notify(Event{ValEventKind::ServerGone, ChangeKind::Single, &change});
}

void Graph1dBase::startBatch(unsigned channels, BatchReason reason, ChangeKind kind)
{
    if (parent_) {
        parent_->startBatch(channels, reason, kind);
        return;
    }
    if (depth_++ > 0)
        return;
    batchKind_ = kind;
    if (journal_)
        journal_->batchStarted(reason, kind);
}

void Graph1dBase::endBatch(unsigned channels, BatchReason reason)
{
    if (parent_) {
        parent_->endBatch(channels, reason);
        return;
    }
    if (depth_ == 0 || --depth_ > 0)
        return;
    // An observer may open the next batch: nothing of this one may be left by then.
    const unsigned changedChannels = std::exchange(pending_, 0u);
    const ChangeKind kind = batchKind_;
    if (journal_)
        journal_->batchEnded(reason, kind);
    if (changedChannels != 0)
        notifyObservers(changedChannels, reason, kind);
}

void Graph1dBase::changed(unsigned channels, BatchReason reason, ChangeKind kind)
{
    Graph1dBase& graph = root();
    if (graph.depth_ > 0)
        graph.pending_ |= channels;
    else if (graph.channels_.size() > 1 || graph.notifier_.hasObservers())
        graph.notifyObservers(channels, reason, kind);
}

void Graph1dBase::notifyObservers(unsigned channels, BatchReason reason, ChangeKind kind)
{
    bool gone = false;
    bool* const outer = std::exchange(gone_, &gone);
    const auto tell = [&](Graph1dBase& graph, unsigned mask) {
        const Change change{&graph, mask, reason, kind};
        graph.notifier_.notify(Event{ValEventKind::Changed, kind, &change});
    };
    for (std::size_t i = 0; !gone && i < channels_.size(); ++i) {
        if (channels_[i] != this && (channels & (1u << i)) != 0)
            tell(*channels_[i], 1u);
    }
    if (!gone)
        tell(*this, channels);
    if (!gone)
        gone_ = outer;
    else if (outer)
        *outer = true;
}

} // namespace oribund
