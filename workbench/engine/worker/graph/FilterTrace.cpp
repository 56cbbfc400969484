#include "workbench/engine/worker/graph/FilterTrace.h"

#include "workbench/engine/worker/graph/OwnFilter.h"

#include <mlt++/Mlt.h>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace workbench
{

struct FilterTrace::State {
    using Clock = std::chrono::steady_clock;

    struct Entry {
        std::thread::id thread;
        std::string effect;
        Clock::time_point since;
    };

    void enter(const std::string& effect)
    {
        const std::lock_guard lock(mutex);
        entries.push_back({std::this_thread::get_id(), effect, Clock::now()});
    }

    /** Ends what this thread entered last; the time it took does not count for what is around it. */
    void leave()
    {
        const std::lock_guard lock(mutex);
        const auto mine = [id = std::this_thread::get_id()](const Entry& entry) { return entry.thread == id; };
        for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry)
            if (mine(*entry)) {
                entries.erase(std::next(entry).base());
                break;
            }
        for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry)
            if (mine(*entry)) {
                entry->since = Clock::now();
                break;
            }
    }

    mutable std::mutex mutex;
    std::vector<Entry> entries; // all threads; of one thread, the innermost last
};

namespace
{

/** What a marker filter carries with it; deleted with the filter. */
struct Marker {
    std::shared_ptr<FilterTrace::State> state;
    std::string effect;
    std::string next;
};

Marker& markerOf(mlt_filter filter)
{
    return *static_cast<Marker*>(filter->child);
}

int markedImage(mlt_frame frame, uint8_t** image, mlt_image_format* format, int* width, int* height, int writable)
{
    const auto filter = static_cast<mlt_filter>(mlt_frame_pop_service(frame));
    const Marker& marker = markerOf(filter);
    marker.state->enter(marker.effect);
    const int error = mlt_frame_get_image(frame, image, format, width, height, writable);
    marker.state->leave();
    return error;
}

int markedAudio(mlt_frame frame, void** buffer, mlt_audio_format* format, int* frequency, int* channels, int* samples)
{
    const auto filter = static_cast<mlt_filter>(mlt_frame_pop_audio(frame));
    const Marker& marker = markerOf(filter);
    marker.state->enter(marker.effect);
    const int error = mlt_frame_get_audio(frame, buffer, format, frequency, channels, samples);
    marker.state->leave();
    return error;
}

/** Filters prepare a frame in their order before any of them renders it; that part can hang as well. */
mlt_frame markedPreparation(mlt_filter filter, mlt_frame frame)
{
    const Marker& marker = markerOf(filter);
    if (!marker.effect.empty())
        marker.state->leave();
    if (!marker.next.empty())
        marker.state->enter(marker.next);
    mlt_frame_push_service(frame, filter);
    mlt_frame_push_get_image(frame, markedImage);
    mlt_frame_push_audio(frame, filter);
    mlt_frame_push_audio(frame, reinterpret_cast<void*>(markedAudio));
    return frame;
}

} // namespace

FilterTrace::FilterTrace()
    : state_(std::make_shared<State>())
{
}

FilterTrace::~FilterTrace() = default;

std::unique_ptr<Mlt::Filter> FilterTrace::attachMarker(Mlt::Service& service, const std::string& effect,
                                                       const std::string& next)
{
    auto owner = makeOwnFilter(Marker{state_, effect, next}, markedPreparation);
    if (!owner)
        return nullptr;
    service.attach(*owner);
    return owner;
}

std::string FilterTrace::current() const
{
    const std::lock_guard lock(state_->mutex);
    const State::Entry* longest = nullptr;
    for (auto entry = state_->entries.begin(); entry != state_->entries.end(); ++entry) {
        const bool innermost = std::none_of(std::next(entry), state_->entries.end(),
                                            [&](const State::Entry& other) { return other.thread == entry->thread; });
        if (innermost && !entry->effect.empty() && (!longest || entry->since < longest->since))
            longest = &*entry;
    }
    return longest ? longest->effect : std::string();
}

} // namespace workbench
