#include "workbench/engine/protocol/MessageChannel.h"

#include "workbench/engine/protocol/Wire.h"

#include <algorithm>
#include <cerrno>
#include <poll.h>
#include <sys/socket.h>

namespace workbench
{

namespace
{

constexpr std::size_t kPiece = std::size_t{256} << 10; // memory grows with what has come, not with what was announced

/** False when the time is over first. */
bool waitFor(int socket, short event, std::chrono::steady_clock::time_point deadline)
{
    using namespace std::chrono;
    for (;;) {
        const auto left = ceil<milliseconds>(deadline - steady_clock::now());
        pollfd waiting{socket, event, 0};
        const auto patience = std::clamp<milliseconds::rep>(left.count(), 0, 3'600'000);
        const int ready = poll(&waiting, 1, static_cast<int>(patience));
        if (ready > 0)
            return true;
        if (left.count() <= 0)
            return false;
    }
}

} // namespace

std::optional<std::pair<Descriptor, Descriptor>> MessageChannel::makePair()
{
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
        return std::nullopt;
    return std::pair(Descriptor(ends[0]), Descriptor(ends[1]));
}

MessageChannel::MessageChannel(Descriptor socket, std::size_t largestMessage)
    : socket_(std::move(socket))
    , largestMessage_(largestMessage)
{
}

MessageChannel::Outcome MessageChannel::send(std::span<const std::uint8_t> message, std::chrono::milliseconds patience)
{
    if (message.size() > largestMessage_)
        return Outcome::Broken;
    WireWriter length;
    length.count(message.size());
    const Clock::time_point deadline = Clock::now() + patience;
    const std::lock_guard lock(sendMutex_);
    const Outcome begun = sendAll(length.take(), deadline);
    return begun == Outcome::Done ? sendAll(message, deadline) : begun;
}

MessageChannel::Outcome MessageChannel::sendAll(std::span<const std::uint8_t> bytes, Clock::time_point deadline)
{
    while (!bytes.empty()) {
        const ssize_t sent = ::send(socket_.number(), bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent >= 0)
            bytes = bytes.subspan(static_cast<std::size_t>(sent));
        else if (errno == EPIPE || errno == ECONNRESET)
            return Outcome::Closed;
        else if (errno != EAGAIN && errno != EINTR)
            return Outcome::Broken;
        else if (!waitFor(socket_.number(), POLLOUT, deadline))
            return Outcome::TimedOut;
    }
    return Outcome::Done;
}

MessageChannel::Outcome MessageChannel::receive(std::vector<std::uint8_t>& message, std::chrono::milliseconds patience)
{
    const Clock::time_point deadline = Clock::now() + patience;
    if (const Outcome outcome = receiveSome(length_, kLengthSize, deadline); outcome != Outcome::Done)
        return outcome;
    const std::size_t size = WireReader(length_).number<std::uint32_t>();
    if (size > largestMessage_)
        return Outcome::Broken;
    if (const Outcome outcome = receiveSome(received_, size, deadline); outcome != Outcome::Done)
        return outcome;
    length_.clear();
    message = std::exchange(received_, {});
    return Outcome::Done;
}

/** Until there are as many as wanted. */
MessageChannel::Outcome MessageChannel::receiveSome(std::vector<std::uint8_t>& into, std::size_t wanted,
                                                    Clock::time_point deadline)
{
    while (into.size() < wanted) {
        const std::size_t had = into.size();
        into.resize(had + std::min(wanted - had, kPiece));
        const ssize_t came = recv(socket_.number(), into.data() + had, into.size() - had, MSG_DONTWAIT);
        const int error = errno;
        into.resize(had + static_cast<std::size_t>(std::max<ssize_t>(came, 0)));
        if (came > 0)
            continue;
        if (came == 0 || error == ECONNRESET)
            return Outcome::Closed;
        if (error != EAGAIN && error != EINTR)
            return Outcome::Broken;
        if (!waitFor(socket_.number(), POLLIN, deadline))
            return Outcome::TimedOut;
    }
    return Outcome::Done;
}

void MessageChannel::shutDown()
{
    ::shutdown(socket_.number(), SHUT_RDWR);
}

} // namespace workbench
