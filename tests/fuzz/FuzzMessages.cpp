// Messages between the program and its workers, both ways: what can be read says, written again, the same bytes, and no
// picture is taken that was not handed over.
#include "workbench/engine/protocol/FramePool.h"
#include "workbench/engine/protocol/MessageCodec.h"

#include <algorithm>
#include <cstdlib>

namespace
{

using namespace workbench;

void require(bool kept)
{
    if (!kept)
        std::abort();
}

template <class Message>
void checkSame(const std::optional<Message>& message, std::span<const std::uint8_t> bytes)
{
    if (message)
        require(std::ranges::equal(encode(*message), bytes));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const std::unique_ptr<FramePool> pool = FramePool::create(4, 4096);
    const std::span<const std::uint8_t> bytes(data, size);
    checkSame(decodeRequest(bytes), bytes);
    const std::optional<Event> event = decodeEvent(bytes);
    checkSame(event, bytes);
    if (const auto* ready = event ? std::get_if<event::FrameReady>(&*event) : nullptr)
        require(!pool->take(*ready));
    return 0;
}
