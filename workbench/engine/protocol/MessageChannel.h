#pragma once

#include "workbench/system/Descriptor.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace workbench
{

/**
 * Whole messages over a stream socket, each after its length. One thread receives at a time; any thread sends.
 *
 * After anything but Done and, when receiving, TimedOut the channel is of no more use: what was sent or read last may
 * be a part of a message.
 */
class MessageChannel
{
public:
    enum class Outcome {
        Done,
        TimedOut,
        Closed, ///< by the other side, or by shutDown()
        Broken  ///< what came is no message, or the system refuses
    };

    /** The length of a message that is too long ends the channel: nothing is read or sent of it. */
    static constexpr std::size_t kLargestMessage = std::size_t{64} << 20;

    /** The two ends of a new connection. Empty when the system has no more descriptors. */
    static std::optional<std::pair<Descriptor, Descriptor>> makePair();

    explicit MessageChannel(Descriptor socket, std::size_t largestMessage = kLargestMessage);

    MessageChannel(const MessageChannel&) = delete;
    MessageChannel& operator=(const MessageChannel&) = delete;

    /** Readable when there is something to receive: for whoever waits for several things. */
    int descriptor() const { return socket_.number(); }

    /** Waits for a reader that is slow. */
    Outcome send(std::span<const std::uint8_t> message, std::chrono::milliseconds patience);

    /**
     * Puts the next message in place of what `message` holds. When it times out in the middle of one, the next call
     * goes on with it.
     */
    Outcome receive(std::vector<std::uint8_t>& message, std::chrono::milliseconds patience);

    /** Ends what another thread waits for here, and the other side's waiting. Any thread. */
    void shutDown();

private:
    using Clock = std::chrono::steady_clock;
    static constexpr std::size_t kLengthSize = 4;

    Outcome sendAll(std::span<const std::uint8_t> bytes, Clock::time_point deadline);
    Outcome receiveSome(std::vector<std::uint8_t>& into, std::size_t wanted, Clock::time_point deadline);

    Descriptor socket_;
    const std::size_t largestMessage_;
    std::mutex sendMutex_;
    std::vector<std::uint8_t> length_; // of the message that is being received
    std::vector<std::uint8_t> received_;
};

} // namespace workbench
