#pragma once

#include "oribund/host/base/Export.h"

#include <array>
#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace oribund
{

/**
 * The keyframes of one curve, in ascending time. Chunks of at most kChunkSize keyframes keep insertion cheap in long
 * curves, and within a chunk times, values, shapes and flags lie apart, so that a search reads nothing but times and a
 * straight curve nothing but times and values. Knows no rule about what a keyframe may be: its user does.
 */
class ORIBUND_API KeyStore
{
public:
    static constexpr int kChunkSize = 256;

    /** Offsets of the handles; the value offset of an automatic one is the slope that was worked out for it. */
    struct Shape {
        double inDt = 0.0;
        double inDv = 0.0;
        double outDt = 0.0;
        double outDv = 0.0;
    };

    static constexpr unsigned char kSmooth = 1;
    static constexpr unsigned char kInAutomatic = 2;
    static constexpr unsigned char kOutAutomatic = 4;

    struct Key {
        double time = 0.0;
        double value = 0.0;
        Shape shape;
        unsigned char flags = 0;
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

    /** The first keyframe; invalid when there is none. */
    Position begin() const noexcept { return {0, size_ > 0 ? 0 : -1}; }

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

    double time(const Position& p) const noexcept { return at(p.chunk).times()[p.offset]; }

    double value(const Position& p) const noexcept { return at(p.chunk).values()[p.offset]; }

    double& value(const Position& p) noexcept { return at(p.chunk).values()[p.offset]; }

    const Shape& shape(const Position& p) const noexcept { return at(p.chunk).shapes()[p.offset]; }

    Shape& shape(const Position& p) noexcept { return at(p.chunk).shapes()[p.offset]; }

    unsigned char flags(const Position& p) const noexcept { return at(p.chunk).flags()[p.offset]; }

    unsigned char& flags(const Position& p) noexcept { return at(p.chunk).flags()[p.offset]; }

    /** Whether two keyframes before to one after the position share its chunk and are straight. */
    bool straightAround(const Position& p) const noexcept
    {
        const Chunk& keys = at(p.chunk);
        if (p.offset < 2 || p.offset + 1 >= keys.count)
            return false;
        const unsigned char* flags = keys.flags() + p.offset;
        return ((flags[-2] | flags[-1] | flags[0] | flags[1]) & kSmooth) == 0;
    }

    /** Puts a keyframe behind those that are not after it. */
    Position insert(const Key& key);
    void erase(const Position& position);
    /** Replaces everything; `keys` ascend in time. */
    void assign(std::span<const Key> keys);

private:
    // One block holds the times, the values, the shapes and the flags, each `capacity` long.
    struct Chunk {
        Chunk() = default;
        explicit Chunk(int keys);

        double* times() const noexcept { return reinterpret_cast<double*>(block.get()); }

        double* values() const noexcept { return times() + capacity; }

        Shape* shapes() const noexcept { return reinterpret_cast<Shape*>(block.get() + capacity * kShapesAt); }

        unsigned char* flags() const noexcept
        {
            return reinterpret_cast<unsigned char*>(block.get() + capacity * kFlagsAt);
        }

        static constexpr std::size_t kShapesAt = 2 * sizeof(double);
        static constexpr std::size_t kFlagsAt = kShapesAt + sizeof(Shape);

        std::unique_ptr<std::byte[]> block;
        int count = 0;
        int capacity = 0;
    };

    static int countUpTo(const double* times, int count, double time) noexcept
    {
        const double* first = times;
        while (count > kScanSize) {
            const int half = count / 2;
            first += first[half - 1] <= time ? half : 0;
            count -= half;
        }
        std::ptrdiff_t scanned = 0;
        for (int i = 0; i < count; ++i)
            scanned += first[i] <= time ? 1 : 0;
        return static_cast<int>(first - times + scanned);
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

    int chunkOfIndex(int index) const noexcept;
    void addChunk(int chunk, int capacity);
    void dropChunk(int chunk);
    void makeRoom(Position& position);
    void splitChunk(int chunk);
    void mergeWithNext(int chunk);
    static void copyKeys(const Chunk& from, int first, int count, Chunk& to, int at);

    int size_ = 0;
    std::vector<Chunk> chunks_;
    std::vector<double> firstTimes_; // of each chunk
    std::vector<int> starts_;        // index of the first keyframe of each chunk
};

} // namespace oribund
