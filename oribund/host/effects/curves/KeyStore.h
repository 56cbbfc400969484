#pragma once

#include "oribund/host/base/Export.h"

#include <array>
#include <cstddef>
#include <limits>
#include <memory>
#include <span>
#include <vector>

namespace oribund
{

/**
 * The keyframes of one curve, in ascending time, which is that of the graph. Chunks of at most kChunkSize keyframes
 * keep insertion cheap in long curves, and within a chunk the times lie apart from the rest, so that a search reads
 * nothing but times. Knows no rule about what a keyframe may be: its user does.
 */
class ORIBUND_API KeyStore
{
public:
    static constexpr int kChunkSize = 256;

    static constexpr unsigned kSmooth = 1;
    static constexpr unsigned kInAutomatic = 2;
    static constexpr unsigned kOutAutomatic = 4;

    /** A keyframe but for its time. The value offset of an automatic handle is the slope that was worked out for it. */
    struct Point {
        double value = 0.0;
        double inDt = 0.0;
        double inDv = 0.0;
        double outDt = 0.0;
        double outDv = 0.0;
        unsigned flags = 0;

        bool isSmooth() const noexcept { return (flags & kSmooth) != 0; }
    };

    struct Key {
        double time = 0.0;
        Point point;
    };

    /** Where a keyframe lies, until the next insertion or removal. */
    struct Position {
        int chunk = 0;
        int offset = -1;

        bool valid() const noexcept { return offset >= 0; }
    };

    int size() const noexcept { return size_; }

    Position position(int index) const noexcept
    {
        const int chunk = chunks_.size() == 1 ? 0 : chunkOfIndex(index);
        return {chunk, index - starts_[static_cast<std::size_t>(chunk)]};
    }

    int index(const Position& position) const noexcept
    {
        return position.valid() ? starts_[static_cast<std::size_t>(position.chunk)] + position.offset : -1;
    }

    /** The last keyframe that is not after `time`; invalid when there is none. */
    Position lower(double time) const noexcept
    {
        if (size_ == 0)
            return {};
        const int chunk = chunks_.size() == 1 ? 0 : chunkOfTime(time);
        const Chunk& keys = at(chunk);
        return {chunk, countUpTo(keys.times(), keys.count, time) - 1};
    }

    /** The time of the first keyframe that is not before `from`, or of any that follows it before `enough`; infinity
        when there is none. */
    double anyTimeFrom(double from, double enough) const noexcept
    {
        constexpr double kNone = std::numeric_limits<double>::infinity();
        if (size_ == 0)
            return kNone;
        // The first times of chunks lie together: with many keyframes between the two times, one of them will do.
        const double first = firstTimes_[static_cast<std::size_t>(chunkOfTime(enough))];
        if (first >= from && first < enough)
            return first;
        const Position before = lower(from);
        if (before.valid() && time(before) >= from)
            return time(before);
        const Position after = before.valid() ? next(before) : begin();
        return after.valid() ? time(after) : kNone;
    }

    /** The first keyframe, and the last one; invalid when there is none. */
    Position begin() const noexcept { return {0, size_ > 0 ? 0 : -1}; }

    Position last() const noexcept
    {
        return size_ > 0 ? Position{static_cast<int>(chunks_.size()) - 1, chunks_.back().count - 1} : Position{};
    }

    /** The neighbours of a valid position; invalid at the ends. */
    Position next(const Position& position) const noexcept
    {
        if (position.offset + 1 < at(position.chunk).count)
            return {position.chunk, position.offset + 1};
        return {position.chunk + 1, position.chunk + 1 < static_cast<int>(chunks_.size()) ? 0 : -1};
    }

    Position previous(const Position& position) const noexcept
    {
        if (position.offset > 0)
            return {position.chunk, position.offset - 1};
        return {position.chunk - 1, position.chunk > 0 ? at(position.chunk - 1).count - 1 : -1};
    }

    /** So many keyframes on from a valid position, or from begin(); there are as many. */
    Position onward(Position position, int steps) const noexcept
    {
        position.offset += steps;
        while (position.offset >= at(position.chunk).count)
            position.offset -= at(position.chunk++).count;
        return position;
    }

    double time(const Position& p) const noexcept { return at(p.chunk).times()[p.offset]; }

    /** Times have to ascend again before the next search. */
    void setTime(const Position& p, double time) noexcept
    {
        at(p.chunk).times()[p.offset] = time;
        if (p.offset == 0)
            firstTimes_[static_cast<std::size_t>(p.chunk)] = time;
    }

    const Point& point(const Position& p) const noexcept { return at(p.chunk).points()[p.offset]; }

    double value(const Position& p) const noexcept { return point(p).value; }

    void setValue(const Position& p, double value) noexcept { at(p.chunk).points()[p.offset].value = value; }

    void setPoint(const Position& p, const Point& point) noexcept
    {
        Point& stored = at(p.chunk).points()[p.offset];
        smooth_ += static_cast<int>(point.isSmooth()) - static_cast<int>(stored.isSmooth());
        stored = point;
    }

    /**
     * Keyframes that lie in one piece, for working on neighbours; the flags are not to be changed in it. `first` and
     * `last` say whether nothing comes before or after it.
     */
    struct Run {
        const double* times;
        Point* points;
        int count;
        bool first;
        bool last;
    };

    Run run(int chunk) noexcept
    {
        const Chunk& keys = at(chunk);
        return {keys.times(), keys.points(), keys.count, chunk == 0, chunk + 1 == static_cast<int>(chunks_.size())};
    }

    /** How many keyframes are smooth. */
    int smoothCount() const noexcept { return smooth_; }

    /** Puts a keyframe behind the one at `left`, which is lower() of its time. */
    Position insertAfter(const Position& left, const Key& key);

    Position insert(const Key& key) { return insertAfter(lower(key.time), key); }

    void erase(const Position& position);
    /** Replaces everything; `keys` ascend in time. */
    void assign(std::span<const Key> keys);

private:
    // One block holds the times and behind them the points, `capacity` of each.
    struct Chunk {
        Chunk() = default;
        explicit Chunk(int keys);

        double* times() const noexcept { return reinterpret_cast<double*>(block.get()); }

        Point* points() const noexcept
        {
            return reinterpret_cast<Point*>(block.get() + static_cast<std::size_t>(capacity) * sizeof(double));
        }

        std::unique_ptr<std::byte[]> block;
        int count = 0;
        int capacity = 0;
    };

    /** How many of the ascending `numbers` are not above `limit`. */
    template <class T>
    static int countUpTo(const T* numbers, int count, T limit) noexcept
    {
        const T* first = numbers;
        while (count > kScanSize) {
            const int half = count / 2;
            first += first[half - 1] <= limit ? half : 0;
            count -= half;
        }
        std::ptrdiff_t scanned = 0;
        for (int i = 0; i < count; ++i)
            scanned += first[i] <= limit ? 1 : 0;
        return static_cast<int>(first - numbers + scanned);
    }

    // Below this many, comparing all is quicker than halving.
    static constexpr int kScanSize = 16;

    const Chunk& at(int chunk) const noexcept { return chunks_[static_cast<std::size_t>(chunk)]; }

    Chunk& at(int chunk) noexcept { return chunks_[static_cast<std::size_t>(chunk)]; }

    int chunkOfTime(double time) const noexcept
    {
        const int upTo = countUpTo(firstTimes_.data(), static_cast<int>(firstTimes_.size()), time);
        return upTo > 0 ? upTo - 1 : 0;
    }

    int chunkOfIndex(int index) const noexcept
    {
        return countUpTo(starts_.data(), static_cast<int>(starts_.size()), index) - 1;
    }

    void addChunk(int chunk, int capacity);
    void dropChunk(int chunk);
    void makeRoom(Position& position);
    void splitChunk(int chunk);
    void mergeWithNext(int chunk);
    static void copyKeys(const Chunk& from, int first, int count, Chunk& to, int at);

    int size_ = 0;
    int smooth_ = 0;
    std::vector<Chunk> chunks_;
    std::vector<double> firstTimes_; // of each chunk
    std::vector<int> starts_;        // index of the first keyframe of each chunk
};

} // namespace oribund
