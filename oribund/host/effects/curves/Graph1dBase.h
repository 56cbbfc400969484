#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/iVirtual.h"
#include "oribund/host/effects/curves/ChangeDescription.h"
#include "oribund/host/effects/curves/Keyframe.h"
#include "oribund/host/notify/Notifier.h"
#include "oribund/host/notify/ValServer.h"

#include <span>
#include <vector>

namespace oribund
{

class BezierCurve;
class iGraphJournal;
class KeyStore;
template <class T>
class Graph1d;

/**
 * Keyframes in ascending time, with one or more channels of values that share the times. What a time is, the owner of
 * the graph says: in that of a parameter it is effect time. Two keyframes are never within kValueTolerance of each
 * other. Used on one thread; reading is safe on any thread while nothing is edited.
 *
 * Edits return false or -1, and change nothing, for an index that does not exist, a number that is not finite or absurd
 * (times beyond kMaxTime, values beyond kMaxValue), and a time that another keyframe has. An edit tells the observers
 * after all channels have changed; one that leaves everything as it was succeeds and tells nobody. Observers may edit
 * the graph, or destroy it.
 */
class ORIBUND_API Graph1dBase : public iVirtual
{
public:
    using Change = ChangeDescription<Graph1dBase>;
    using Event = ValServerEvent<Change>;

    static constexpr double kMaxTime = 1e10;
    static constexpr double kMaxValue = 1e100;
    static constexpr int kMaxChannels = 8;

    ~Graph1dBase() override;
    Graph1dBase(const Graph1dBase&) = delete;
    Graph1dBase& operator=(const Graph1dBase&) = delete;

    int size() const noexcept;

    bool empty() const noexcept { return size() == 0; }

    /** The index must exist. */
    double timeAt(int index) const noexcept;
    KeyframeType typeAt(int index) const noexcept;

    /** The keyframe whose time equals `time` within kValueTolerance, or -1. */
    int indexAt(double time) const noexcept;
    /** The last keyframe that is not after `time`, or -1. */
    int lowerIndex(double time) const noexcept;
    /** The keyframe closest in time, the earlier of two; -1 only for an empty graph. */
    int nearestIndex(double time) const noexcept;
    /** For drawing: the time of a keyframe from `from` on; the first one, or any of those before `enough`, which is
        quicker found. Infinity when there is none. */
    double anyTimeFrom(double from, double enough) const noexcept;

    int channelCount() const noexcept { return static_cast<int>(channels_.size()); }

    /** A channel as a graph of its own. What changes its times changes those of all channels. */
    Graph1d<double>& channel(int index) noexcept;
    const Graph1d<double>& channel(int index) const noexcept;
    /** The channel with its keyframes and tangents. */
    BezierCurve& curve(int index) noexcept;
    const BezierCurve& curve(int index) const noexcept;

    /**
     * Adds a keyframe that has the value, and the type, of the curve at that time, with automatic tangents. Returns its
     * index. The curve goes through the same keyframes as before, but a smooth one may take another way between them;
     * see subdivide().
     */
    int addKeyframe(double time, ChangeKind kind = ChangeKind::Single);

    /**
     * Adds a keyframe without changing the curve at any time: tangents at and next to the new keyframe become explicit
     * where they have to. Returns its index.
     */
    int subdivide(double time, ChangeKind kind = ChangeKind::Single);

    bool removeKeyframe(int index, ChangeKind kind = ChangeKind::Single);

    /** Gives a keyframe another time, past others if need be. Returns its new index. */
    int moveKeyframe(int index, double newTime, ChangeKind kind = ChangeKind::Single);

    /**
     * Gives keyframes, whose indices ascend, one new time each, as one change, and leaves their order as it is. Values,
     * types and explicit tangents stay. False, and nothing changed, when a keyframe would get to or past another.
     */
    bool setKeyframeTimes(std::span<const int> indices, std::span<const double> times,
                          ChangeKind kind = ChangeKind::Single);

    /** How the curve runs from this keyframe to the next one, in all channels. */
    bool setKeyframeType(int index, KeyframeType type, ChangeKind kind = ChangeKind::Single);

    /** The values of one keyframe in all channels, as one change. */
    bool setKeyframeValues(int index, std::span<const double> values, ChangeKind kind = ChangeKind::Single);

    /** As addKeyframe(), but with these values, one for each channel. */
    int addKeyframeWithValues(double time, std::span<const double> values, ChangeKind kind = ChangeKind::Single);

    /** All keyframes of a channel. */
    std::vector<Keyframe> keyframes(int channel = 0) const;

    /**
     * Replaces everything by these lists, one for each channel, all with the same ascending times. False, and nothing
     * changed, when they are not.
     */
    bool setKeyframes(std::span<const std::vector<Keyframe>> channels, ChangeKind kind = ChangeKind::Single);
    bool removeAllKeyframes(ChangeKind kind = ChangeKind::Single);

    /**
     * Everything between startBatch() and the endBatch() that matches it reaches the observers as one change, at the
     * end; as none if nothing changed. Batches nest: the outermost one counts. `channels` says which channels the
     * caller has in mind; observers are told which ones did change.
     */
    void startBatch(unsigned channels, BatchReason reason, ChangeKind kind);
    void endBatch(unsigned channels, BatchReason reason);

    bool inBatch() const noexcept { return root().depth_ > 0; }

    /** Tells of each change (ValEventKind::Changed) and of the graph's end (ServerGone). */
    Notifier<Event>& changes() noexcept { return notifier_; }

    /** Where elementary changes are recorded, or null. The journal must outlive the graph or be taken off again. */
    void setJournal(iGraphJournal* journal) noexcept { root().journal_ = journal; }

    iGraphJournal* journal() const noexcept { return root().journal_; }

    /** Whether `time` and `value` are numbers that a keyframe can have. */
    static bool usableTime(double time) noexcept { return time >= -kMaxTime && time <= kMaxTime; }

    static bool usableValue(double value) noexcept { return value >= -kMaxValue && value <= kMaxValue; }

protected:
    Graph1dBase() = default;

    /** Called once by the constructor of a derived class; `channels` live in it. */
    void setChannels(std::span<BezierCurve* const> channels);

    /** Has the end announced while the derived class is still whole. */
    void announceEnd();

    Graph1dBase& root() noexcept { return parent_ ? *parent_ : *this; }

    const Graph1dBase& root() const noexcept { return parent_ ? *parent_ : *this; }

    /** Called after every edit, with the journal written: tells the observers, now or at the end of the batch. */
    void changed(unsigned channels, BatchReason reason, ChangeKind kind);

    unsigned ownMask() const noexcept { return 1u << channelIndex_; }

    int channelIndex() const noexcept { return channelIndex_; }

private:
    friend class BezierCurve;

    const KeyStore& keys() const noexcept { return *times_; }

    bool exists(int index) const noexcept { return index >= 0 && index < size(); }

    bool isFree(double time, int except = -1) const noexcept;
    bool sameTimes(std::span<const std::vector<Keyframe>> channels) const noexcept;
    int insertInAll(double time, const double* values, ChangeKind kind);
    void notifyObservers(unsigned channels, BatchReason reason, ChangeKind kind);

    std::span<BezierCurve* const> channels_;
    const KeyStore* times_ = nullptr; // of the first channel
    Graph1dBase* parent_ = nullptr;   // of a channel: the graph that keeps its times in step
    int channelIndex_ = 0;
    int depth_ = 0;
    unsigned pending_ = 0;
    ChangeKind batchKind_ = ChangeKind::Single;
    iGraphJournal* journal_ = nullptr;
    bool* gone_ = nullptr; // told when the graph is destroyed by an observer
    Notifier<Event> notifier_;
};

/** Opens a batch on a graph and closes it at the end of the scope. */
class GraphBatch
{
public:
    GraphBatch(Graph1dBase& graph, BatchReason reason, BatchReason endReason, ChangeKind kind)
        : graph_(graph)
        , endReason_(endReason)
    {
        graph_.startBatch(kAllChannels, reason, kind);
    }

    ~GraphBatch() { graph_.endBatch(kAllChannels, endReason_); }

    GraphBatch(const GraphBatch&) = delete;
    GraphBatch& operator=(const GraphBatch&) = delete;

private:
    Graph1dBase& graph_;
    BatchReason endReason_;
};

} // namespace oribund
