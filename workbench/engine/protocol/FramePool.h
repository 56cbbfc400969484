#pragma once

#include "workbench/engine/protocol/FrameImage.h"
#include "workbench/engine/protocol/Messages.h"
#include "workbench/engine/protocol/SharedMemory.h"

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>

namespace workbench
{

/**
 * Pictures pass from the worker to its client in memory that both have: a few slots of one size. The worker renders
 * into one that is free and hands it over; the client looks at it there, and it is free again with the last reference.
 *
 * This is the client's side. It takes nothing on the worker's word: who holds a slot is noted in memory of its own.
 */
class FramePool
{
public:
    static constexpr int kSlots = 8;
    static constexpr std::size_t kSlotBytes = std::size_t{4} * 7680 * 4320; ///< they take memory once they are filled

    /** Empty when there is no memory. */
    static std::unique_ptr<FramePool> create(int slots = kSlots, std::size_t slotBytes = kSlotBytes);

    /** For the worker that is started. */
    int descriptor() const;

    /** The picture that the worker says is in a slot; it may outlive the pool. Null when that cannot be so. Any thread.
     */
    FrameImagePtr take(const event::FrameReady& ready);

    /** The worker has gone: what it was rendering into is free. Pictures that were taken stay. */
    void reclaim();

private:
    class Shared;

    explicit FramePool(std::shared_ptr<Shared> shared);

    std::shared_ptr<Shared> shared_;
};

/** The same slots as the worker sees them. */
class FrameSlots
{
public:
    /** The pool of the client that started this process. Empty when the descriptor is not of one. */
    static std::unique_ptr<FrameSlots> map(Descriptor descriptor);

    bool fits(int width, int height) const;

    /**
     * Room for a picture, in a slot that is the caller's until the last reference goes or it is handed over. Waits for
     * one to become free. Null when none did, or the picture does not fit. Any thread.
     */
    std::shared_ptr<std::uint8_t[]> reserve(int width, int height, std::chrono::milliseconds patience);

    /** Gives a picture in such a slot to the client, once. What comes is to be sent at once; empty for one elsewhere.
     */
    std::optional<event::FrameReady> handOver(const FrameImage& image);

private:
    class Shared;

    explicit FrameSlots(std::shared_ptr<Shared> shared);

    std::shared_ptr<Shared> shared_;
};

} // namespace workbench
