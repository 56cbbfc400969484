#include "workbench/engine/protocol/FramePool.h"

#include <algorithm>
#include <atomic>
#include <bit>
#include <mutex>
#include <new>
#include <thread>
#include <utility>
#include <vector>

namespace workbench
{

namespace
{

constexpr std::size_t kPage = 4096;
constexpr int kMostSlots = 64;

/**
 * Who has a slot: the lower two bits. Above them is a count of how often it became free, so that one who gave it up
 * late takes it from nobody else.
 */
enum class Holder : std::uint32_t { Nobody = 0, Worker = 1, Client = 2 };

constexpr std::uint32_t kHolderMask = 3;

Holder holderOf(std::uint32_t word)
{
    return static_cast<Holder>(word & kHolderMask);
}

std::uint32_t heldBy(Holder holder, std::uint32_t word)
{
    return (word & ~kHolderMask) | static_cast<std::uint32_t>(holder);
}

std::uint32_t freed(std::uint32_t word)
{
    return heldBy(Holder::Nobody, word) + kHolderMask + 1;
}

/** The page before the slots. */
struct PoolHeader {
    std::uint64_t slotBytes;
    std::uint32_t count;
    std::array<std::atomic<std::uint32_t>, kMostSlots> words;
};

static_assert(std::atomic<std::uint32_t>::is_always_lock_free && sizeof(PoolHeader) <= kPage);

PoolHeader& headerOf(const SharedMemory& memory)
{
    return *std::launder(reinterpret_cast<PoolHeader*>(memory.bytes().data()));
}

std::uint8_t* slotOf(const SharedMemory& memory, int index, std::size_t slotBytes)
{
    return memory.bytes().data() + kPage + static_cast<std::size_t>(index) * slotBytes;
}

/** In a slot of so many bytes. Sides may be anything. */
bool fitsInto(std::size_t slotBytes, int width, int height)
{
    return width > 0 && height > 0 &&
           static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(height) <= slotBytes / 4;
}

} // namespace

/** Kept by the pool and by every picture that was taken. */
class FramePool::Shared
{
public:
    Shared(SharedMemory memory, int slots, std::size_t slotBytes)
        : memory_(std::move(memory))
        , slotBytes_(slotBytes)
        , taken_(static_cast<std::size_t>(slots), false)
    {
        PoolHeader* const header = new (memory_.bytes().data()) PoolHeader();
        header->slotBytes = slotBytes;
        header->count = static_cast<std::uint32_t>(slots);
    }

    int descriptor() const { return memory_.descriptor(); }

    bool take(const event::FrameReady& ready)
    {
        const std::lock_guard lock(mutex_);
        if (ready.slot < 0 || static_cast<std::size_t>(ready.slot) >= taken_.size() ||
            !fitsInto(slotBytes_, ready.width, ready.height) || taken_[static_cast<std::size_t>(ready.slot)] ||
            holderOf(word(ready.slot)) != Holder::Client)
            return false;
        taken_[static_cast<std::size_t>(ready.slot)] = true;
        return true;
    }

    void giveBack(int slot)
    {
        const std::lock_guard lock(mutex_);
        taken_[static_cast<std::size_t>(slot)] = false;
        word(slot) = freed(word(slot));
    }

    void reclaim()
    {
        const std::lock_guard lock(mutex_);
        for (std::size_t slot = 0; slot < taken_.size(); ++slot)
            if (!taken_[slot])
                word(static_cast<int>(slot)) = freed(word(static_cast<int>(slot)));
    }

    const std::uint8_t* slot(int index) const { return slotOf(memory_, index, slotBytes_); }

private:
    std::atomic<std::uint32_t>& word(int slot) { return headerOf(memory_).words[static_cast<std::size_t>(slot)]; }

    const SharedMemory memory_;
    const std::size_t slotBytes_;
    std::mutex mutex_;
    std::vector<bool> taken_;
};

std::unique_ptr<FramePool> FramePool::create(int slots, std::size_t slotBytes)
{
    slots = std::clamp(slots, 1, kMostSlots);
    slotBytes = (slotBytes + kPage - 1) / kPage * kPage;
    auto memory = SharedMemory::create("frames", kPage + static_cast<std::size_t>(slots) * slotBytes);
    if (!memory)
        return nullptr;
    return std::unique_ptr<FramePool>(new FramePool(std::make_shared<Shared>(std::move(*memory), slots, slotBytes)));
}

FramePool::FramePool(std::shared_ptr<Shared> shared)
    : shared_(std::move(shared))
{
}

int FramePool::descriptor() const
{
    return shared_->descriptor();
}

FrameImagePtr FramePool::take(const event::FrameReady& ready)
{
    if (!shared_->take(ready))
        return nullptr;
    const std::shared_ptr<const std::uint8_t[]> bytes(
        shared_->slot(ready.slot),
        [shared = shared_, slot = ready.slot](const std::uint8_t*) { shared->giveBack(slot); });
    auto image = std::make_shared<FrameImage>();
    image->width = ready.width;
    image->height = ready.height;
    image->rgba = PixelBytes(bytes, byteCount(ready.width, ready.height));
    image->frame = ready.frame;
    image->revision = ready.revision;
    return image;
}

void FramePool::reclaim()
{
    shared_->reclaim();
}

/** Kept by the worker and by every picture that it renders. */
class FrameSlots::Shared
{
public:
    explicit Shared(SharedMemory memory)
        : memory_(std::move(memory))
        , slotBytes_(headerOf(memory_).slotBytes)
        , count_(static_cast<int>(headerOf(memory_).count))
    {
    }

    std::size_t slotBytes() const { return slotBytes_; }

    std::uint8_t* slot(int index) const { return slotOf(memory_, index, slotBytes_); }

    std::atomic<std::uint32_t>& word(int slot) { return headerOf(memory_).words[static_cast<std::size_t>(slot)]; }

    /** The first that is free: those behind it may never take memory. */
    std::optional<int> claim()
    {
        for (int index = 0; index < count_; ++index) {
            std::uint32_t now = word(index);
            if (holderOf(now) == Holder::Nobody &&
                word(index).compare_exchange_strong(now, heldBy(Holder::Worker, now)))
                return index;
        }
        return std::nullopt;
    }

    /** The slot that begins there. */
    std::optional<int> find(const std::uint8_t* start) const
    {
        for (int index = 0; index < count_; ++index)
            if (slot(index) == start)
                return index;
        return std::nullopt;
    }

private:
    const SharedMemory memory_;
    const std::size_t slotBytes_;
    const int count_;
};

std::unique_ptr<FrameSlots> FrameSlots::map(Descriptor descriptor)
{
    auto memory = SharedMemory::map(std::move(descriptor), kPage);
    if (!memory)
        return nullptr;
    const PoolHeader& header = headerOf(*memory);
    const std::size_t space = memory->bytes().size() - kPage;
    if (header.count == 0 || header.count > kMostSlots || header.slotBytes == 0 ||
        header.slotBytes > space / header.count)
        return nullptr;
    return std::unique_ptr<FrameSlots>(new FrameSlots(std::make_shared<Shared>(std::move(*memory))));
}

FrameSlots::FrameSlots(std::shared_ptr<Shared> shared)
    : shared_(std::move(shared))
{
}

bool FrameSlots::fits(int width, int height) const
{
    return fitsInto(shared_->slotBytes(), width, height);
}

std::shared_ptr<std::uint8_t[]> FrameSlots::reserve(int width, int height, std::chrono::milliseconds patience)
{
    if (!fits(width, height))
        return nullptr;
    const auto deadline = std::chrono::steady_clock::now() + patience;
    std::optional<int> slot = shared_->claim();
    while (!slot && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        slot = shared_->claim();
    }
    if (!slot)
        return nullptr;
    const auto giveUp = [shared = shared_, slot = *slot, mine = shared_->word(*slot).load()](const std::uint8_t*) {
        std::uint32_t expected = mine; // another word once it was handed over
        shared->word(slot).compare_exchange_strong(expected, freed(mine));
    };
    return {shared_->slot(*slot), giveUp};
}

std::optional<event::FrameReady> FrameSlots::handOver(const FrameImage& image)
{
    const std::optional<int> slot = shared_->find(image.rgba.data());
    if (!slot)
        return std::nullopt;
    std::atomic<std::uint32_t>& word = shared_->word(*slot);
    word = heldBy(Holder::Client, word);
    return event::FrameReady{*slot, image.width, image.height, image.frame, image.revision};
}

} // namespace workbench
