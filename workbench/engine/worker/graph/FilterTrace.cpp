#include "workbench/engine/worker/graph/FilterTrace.h"

#include "workbench/engine/protocol/TraceMarks.h"
#include "workbench/engine/worker/graph/OwnFilter.h"

#include <mlt++/Mlt.h>

#include <cstdint>

namespace workbench
{

namespace
{

/** What a marker filter carries with it; deleted with the filter. */
struct Marker {
    TraceMarks* marks;
    std::uint64_t effect;
    std::uint64_t next;
};

Marker& markerOf(mlt_filter filter)
{
    return *static_cast<Marker*>(filter->child);
}

int markedImage(mlt_frame frame, uint8_t** image, mlt_image_format* format, int* width, int* height, int writable)
{
    const auto filter = static_cast<mlt_filter>(mlt_frame_pop_service(frame));
    const Marker& marker = markerOf(filter);
    marker.marks->enter(marker.effect);
    const int error = mlt_frame_get_image(frame, image, format, width, height, writable);
    marker.marks->leave();
    return error;
}

int markedAudio(mlt_frame frame, void** buffer, mlt_audio_format* format, int* frequency, int* channels, int* samples)
{
    const auto filter = static_cast<mlt_filter>(mlt_frame_pop_audio(frame));
    const Marker& marker = markerOf(filter);
    marker.marks->enter(marker.effect);
    const int error = mlt_frame_get_audio(frame, buffer, format, frequency, channels, samples);
    marker.marks->leave();
    return error;
}

/** Filters prepare a frame in their order before any of them renders it; that part can hang as well. */
mlt_frame markedPreparation(mlt_filter filter, mlt_frame frame)
{
    const Marker& marker = markerOf(filter);
    if (marker.effect != 0)
        marker.marks->leave();
    if (marker.next != 0)
        marker.marks->enter(marker.next);
    mlt_frame_push_service(frame, filter);
    mlt_frame_push_get_image(frame, markedImage);
    mlt_frame_push_audio(frame, filter);
    mlt_frame_push_audio(frame, reinterpret_cast<void*>(markedAudio));
    return frame;
}

} // namespace

std::unique_ptr<Mlt::Filter> attachMarker(Mlt::Service& service, TraceMarks& marks, const std::string& effect,
                                          const std::string& next)
{
    auto owner = makeOwnFilter(Marker{&marks, effectMark(effect), effectMark(next)}, markedPreparation);
    if (owner)
        service.attach(*owner);
    return owner;
}

} // namespace workbench
