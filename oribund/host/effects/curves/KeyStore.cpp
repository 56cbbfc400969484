#include "oribund/host/effects/curves/KeyStore.h"

#include <algorithm>
#include <cstring>

namespace oribund
{

namespace
{

constexpr int kSmallestCapacity = 8;
// A chunk that has fallen to this joins its neighbour, if the two then leave room for more.
constexpr int kMergeBelow = KeyStore::kChunkSize / 4;
constexpr int kMergedAtMost = KeyStore::kChunkSize * 5 / 8;
constexpr int kAssignedFill = KeyStore::kChunkSize * 3 / 4;

template <class T>
void openGap(T* elements, int at, int count) noexcept
{
    std::memmove(elements + at + 1, elements + at, static_cast<std::size_t>(count - at) * sizeof(T));
}

template <class T>
void closeGap(T* elements, int at, int count) noexcept
{
    std::memmove(elements + at, elements + at + 1, static_cast<std::size_t>(count - at - 1) * sizeof(T));
}

int capacityFor(int count) noexcept
{
    int capacity = kSmallestCapacity;
    while (capacity < count)
        capacity *= 2;
    return capacity;
}

} // namespace

KeyStore::Chunk::Chunk(int keys)
    : block(std::make_unique_for_overwrite<std::byte[]>(static_cast<std::size_t>(keys) *
                                                        (sizeof(double) + sizeof(Point))))
    , capacity(keys)
{
}

KeyStore::Position KeyStore::insertAfter(const Position& left, const Key& key)
{
    if (chunks_.empty())
        addChunk(0, kSmallestCapacity);
    Position position{left.valid() ? left.chunk : 0, left.offset + 1};
    if (const Chunk& full = at(position.chunk); full.count == full.capacity)
        makeRoom(position);

    Chunk& chunk = at(position.chunk);
    const int offset = position.offset;
    openGap(chunk.times(), offset, chunk.count);
    openGap(chunk.points(), offset, chunk.count);
    chunk.times()[offset] = key.time;
    chunk.points()[offset] = key.point;
    ++chunk.count;
    ++size_;
    smooth_ += key.point.isSmooth() ? 1 : 0;
    if (offset == 0)
        firstTimes_[static_cast<std::size_t>(position.chunk)] = key.time;
    for (std::size_t i = static_cast<std::size_t>(position.chunk) + 1; i < starts_.size(); ++i)
        ++starts_[i];
    return position;
}

void KeyStore::erase(const Position& position)
{
    Chunk& chunk = at(position.chunk);
    smooth_ -= chunk.points()[position.offset].isSmooth() ? 1 : 0;
    closeGap(chunk.times(), position.offset, chunk.count);
    closeGap(chunk.points(), position.offset, chunk.count);
    --chunk.count;
    --size_;
    for (std::size_t i = static_cast<std::size_t>(position.chunk) + 1; i < starts_.size(); ++i)
        --starts_[i];

    if (chunk.count == 0) {
        dropChunk(position.chunk);
        return;
    }
    if (position.offset == 0)
        firstTimes_[static_cast<std::size_t>(position.chunk)] = chunk.times()[0];
    if (chunk.count < kMergeBelow && chunks_.size() > 1) {
        const bool last = position.chunk + 1 == static_cast<int>(chunks_.size());
        mergeWithNext(last ? position.chunk - 1 : position.chunk);
    }
}

void KeyStore::assign(std::span<const Key> keys)
{
    const int count = static_cast<int>(keys.size());
    chunks_.clear();
    firstTimes_.clear();
    starts_.clear();
    size_ = count;
    smooth_ = 0;
    for (int first = 0; first < count; first += kAssignedFill) {
        const int part = std::min(kAssignedFill, count - first);
        Chunk chunk(capacityFor(part));
        for (int i = 0; i < part; ++i) {
            const Key& key = keys[static_cast<std::size_t>(first + i)];
            chunk.times()[i] = key.time;
            chunk.points()[i] = key.point;
            smooth_ += key.point.isSmooth() ? 1 : 0;
        }
        chunk.count = part;
        firstTimes_.push_back(chunk.times()[0]);
        starts_.push_back(first);
        chunks_.push_back(std::move(chunk));
    }
}

void KeyStore::addChunk(int chunk, int capacity)
{
    chunks_.insert(chunks_.begin() + chunk, Chunk(capacity));
    firstTimes_.insert(firstTimes_.begin() + chunk, 0.0);
    starts_.insert(starts_.begin() + chunk, chunk < static_cast<int>(starts_.size()) ? starts_[chunk] : size_);
}

void KeyStore::dropChunk(int chunk)
{
    chunks_.erase(chunks_.begin() + chunk);
    firstTimes_.erase(firstTimes_.begin() + chunk);
    starts_.erase(starts_.begin() + chunk);
}

void KeyStore::makeRoom(Position& position)
{
    Chunk& chunk = at(position.chunk);
    if (chunk.capacity < kChunkSize) {
        Chunk larger(chunk.capacity * 2);
        copyKeys(chunk, 0, chunk.count, larger, 0);
        larger.count = chunk.count;
        chunk = std::move(larger);
        return;
    }
    const bool appending = position.offset == chunk.count && position.chunk + 1 == static_cast<int>(chunks_.size());
    if (appending) {
        // Keyframes that come in order fill their chunks.
        ++position.chunk;
        position.offset = 0;
        addChunk(position.chunk, kChunkSize);
        return;
    }
    splitChunk(position.chunk);
    if (const int kept = at(position.chunk).count; position.offset > kept) {
        ++position.chunk;
        position.offset -= kept;
    }
}

void KeyStore::splitChunk(int chunk)
{
    addChunk(chunk + 1, kChunkSize);
    Chunk& left = at(chunk);
    Chunk& right = at(chunk + 1);
    const int kept = left.count / 2;
    right.count = left.count - kept;
    copyKeys(left, kept, right.count, right, 0);
    left.count = kept;
    firstTimes_[static_cast<std::size_t>(chunk) + 1] = right.times()[0];
    starts_[static_cast<std::size_t>(chunk) + 1] = starts_[static_cast<std::size_t>(chunk)] + kept;
}

void KeyStore::mergeWithNext(int chunk)
{
    Chunk& left = at(chunk);
    const Chunk& right = at(chunk + 1);
    const int together = left.count + right.count;
    if (together > kMergedAtMost)
        return;
    if (together > left.capacity) {
        Chunk larger(capacityFor(together));
        copyKeys(left, 0, left.count, larger, 0);
        larger.count = left.count;
        left = std::move(larger);
    }
    copyKeys(right, 0, right.count, left, left.count);
    left.count = together;
    dropChunk(chunk + 1);
}

void KeyStore::copyKeys(const Chunk& from, int first, int count, Chunk& to, int at)
{
    std::copy_n(from.times() + first, count, to.times() + at);
    std::copy_n(from.points() + first, count, to.points() + at);
}

} // namespace oribund
