#include "workbench/engine/protocol/TraceMarks.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <limits>
#include <new>

namespace workbench
{

namespace
{

constexpr std::size_t kLanes = 64;
constexpr std::uint32_t kDepth = 64;

// Safe in a signal handler.
int threadNumber()
{
    return static_cast<int>(syscall(SYS_gettid));
}

int knownThreadNumber()
{
    thread_local const int number = threadNumber();
    return number;
}

} // namespace

/** One thread's way into nested effects. It belongs to whoever has put the number of the thread there. */
struct TraceMarks::Lane {
    std::atomic<int> thread;
    std::atomic<std::uint32_t> depth; // may be above kDepth: the effects beyond have no name
    std::atomic<Clock::rep> since;    // when the thread came to where it is now
    std::array<std::atomic<std::uint64_t>, kDepth> effects;

    std::uint64_t innermost() const
    {
        const std::uint32_t in = std::min(depth.load(std::memory_order_acquire), kDepth);
        return in == 0 ? 0 : effects[in - 1].load(std::memory_order_relaxed);
    }
};

struct TraceMarks::Page {
    std::array<std::atomic<Clock::rep>, 2> deadlines; // by Work; 0 for none
    std::atomic<std::uint64_t> fault;
    std::atomic<std::uint32_t> taken;
    std::atomic<int> frame;
    std::array<Lane, kLanes> lanes;
};

static_assert(std::atomic<int>::is_always_lock_free && std::atomic<std::uint64_t>::is_always_lock_free);

std::uint64_t effectMark(std::string_view id)
{
    std::uint64_t hash = 0xcbf29ce484222325U; // FNV-1a
    for (const char character : id)
        hash = (hash ^ static_cast<unsigned char>(character)) * 0x100000001b3U;
    return id.empty() ? 0 : std::max<std::uint64_t>(hash, 1);
}

std::unique_ptr<TraceMarks> TraceMarks::create()
{
    auto memory = SharedMemory::create("marks", sizeof(Page));
    if (!memory)
        return nullptr;
    new (memory->bytes().data()) Page();
    return std::unique_ptr<TraceMarks>(new TraceMarks(std::move(*memory)));
}

std::unique_ptr<TraceMarks> TraceMarks::map(Descriptor descriptor)
{
    auto memory = SharedMemory::map(std::move(descriptor), sizeof(Page));
    return memory ? std::unique_ptr<TraceMarks>(new TraceMarks(std::move(*memory))) : nullptr;
}

TraceMarks::TraceMarks(SharedMemory memory)
    : memory_(std::move(memory))
{
}

TraceMarks::Page& TraceMarks::page() const
{
    return *std::launder(reinterpret_cast<Page*>(memory_.bytes().data()));
}

TraceMarks::Lane* TraceMarks::mine(bool claim)
{
    const int thread = knownThreadNumber();
    for (Lane& lane : page().lanes)
        if (lane.thread.load(std::memory_order_relaxed) == thread)
            return &lane;
    if (!claim)
        return nullptr;
    for (Lane& lane : page().lanes)
        if (int nobody = 0; lane.thread.compare_exchange_strong(nobody, thread))
            return &lane;
    return nullptr;
}

void TraceMarks::enter(std::uint64_t effect)
{
    Lane* const lane = mine(true);
    if (!lane)
        return;
    const std::uint32_t depth = lane->depth.load(std::memory_order_relaxed);
    if (depth < kDepth)
        lane->effects[depth].store(effect, std::memory_order_relaxed);
    lane->since.store(Clock::now().time_since_epoch().count(), std::memory_order_relaxed);
    lane->depth.store(depth + 1, std::memory_order_release);
}

void TraceMarks::leave()
{
    Lane* const lane = mine(false);
    if (!lane)
        return;
    const std::uint32_t depth = lane->depth.load(std::memory_order_relaxed);
    lane->since.store(Clock::now().time_since_epoch().count(), std::memory_order_relaxed);
    lane->depth.store(depth - 1, std::memory_order_release);
    if (depth == 1)
        lane->thread.store(0, std::memory_order_release);
}

void TraceMarks::setDeadline(Work work, Clock::time_point deadline)
{
    const Clock::rep count = deadline == Clock::time_point::max() ? 0 : deadline.time_since_epoch().count();
    page().deadlines[static_cast<std::size_t>(work)] = count;
}

void TraceMarks::allowUntil(Clock::time_point deadline)
{
    for (auto& known : page().deadlines) {
        Clock::rep now = known.load();
        while (now != 0 && now < deadline.time_since_epoch().count() &&
               !known.compare_exchange_weak(now, deadline.time_since_epoch().count())) {
        }
    }
}

void TraceMarks::countTaken()
{
    ++page().taken;
}

void TraceMarks::setFrame(int frame)
{
    page().frame = frame;
}

void TraceMarks::noteFault() noexcept
{
    const int thread = threadNumber();
    for (const Lane& lane : page().lanes)
        if (std::uint64_t none = 0; lane.thread.load() == thread)
            page().fault.compare_exchange_strong(none, lane.innermost());
}

std::uint64_t TraceMarks::faulted() const
{
    return page().fault;
}

std::uint64_t TraceMarks::current() const
{
    std::uint64_t result = 0;
    Clock::rep longest = std::numeric_limits<Clock::rep>::max();
    for (const Lane& lane : page().lanes) {
        const std::uint64_t effect = lane.thread.load() != 0 ? lane.innermost() : 0;
        const Clock::rep since = lane.since.load(std::memory_order_relaxed);
        if (effect != 0 && since < longest) {
            longest = since;
            result = effect;
        }
    }
    return result;
}

int TraceMarks::frame() const
{
    return page().frame;
}

std::uint32_t TraceMarks::taken() const
{
    return page().taken;
}

bool TraceMarks::isAtWork() const
{
    return isLate(Clock::time_point::max());
}

bool TraceMarks::isLate(Clock::time_point now) const
{
    return std::any_of(page().deadlines.begin(), page().deadlines.end(), [now](const auto& deadline) {
        const Clock::rep count = deadline.load();
        return count != 0 && now.time_since_epoch().count() > count;
    });
}

void TraceMarks::clear()
{
    Page& marks = page();
    for (auto& deadline : marks.deadlines)
        deadline = 0;
    marks.fault = 0;
    marks.taken = 0;
    marks.frame = 0;
    for (Lane& lane : marks.lanes) {
        lane.depth = 0;
        lane.thread = 0;
    }
}

} // namespace workbench
