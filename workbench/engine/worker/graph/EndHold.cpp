#include "workbench/engine/worker/graph/EndHold.h"

#include "workbench/engine/worker/graph/OwnFilter.h"

#include <mlt++/Mlt.h>

#include <algorithm>
#include <cstring>
#include <string_view>

namespace workbench
{

namespace
{

/** What the filter carries with it; deleted with the filter. */
struct Hold {
    mlt_producer producer;
    mlt_position lastFound = -1; ///< a position shortly before the end of the pictures; -1 when none was looked for
    bool isSearching = false;
};

constexpr mlt_position kFew = 8;

struct FrameClose {
    void operator()(mlt_frame frame) const { mlt_frame_close(frame); }
};

using FramePtr = std::unique_ptr<mlt_frame_s, FrameClose>;

bool isTestCard(mlt_frame frame)
{
    return mlt_properties_get_int(MLT_FRAME_PROPERTIES(frame), "test_image") != 0;
}

/** Whether the file has a picture there. Asked for in the format in which it is wanted afterwards: the decoder keeps
 * what it has made, colours converted. */
bool hasPicture(mlt_producer producer, mlt_position position, mlt_image_format format)
{
    mlt_producer_seek(producer, position);
    mlt_frame made = nullptr;
    if (producer->get_frame(producer, &made, 0) != 0 || !made)
        return false;
    const FramePtr frame(made);
    uint8_t* image = nullptr;
    int width = 0;
    int height = 0;
    const int error = mlt_frame_get_image(made, &image, &format, &width, &height, 0);
    return error == 0 && !isTestCard(made);
}

/** A position that has a picture, and is followed by one without within a few; -1 for none. */
mlt_position findPictureBefore(mlt_producer producer, mlt_position without, mlt_image_format format)
{
    mlt_position with = -1;
    for (mlt_position back = 1, from = without; with < 0; back *= 2) {
        const mlt_position at = std::max(from - back, 0);
        if (hasPicture(producer, at, format))
            with = at;
        else if (at == 0)
            return -1;
        else
            without = at;
    }
    while (without - with > kFew) {
        const mlt_position middle = with + (without - with) / 2;
        hasPicture(producer, without, format); // a decoder that plays on from a picture shows that one again
        (hasPicture(producer, middle, format) ? with : without) = middle;
    }
    return with;
}

/** Plays to the end of the pictures, from shortly before it, where the decoder goes on to show the last. */
mlt_position playToLast(mlt_producer producer, mlt_position from, mlt_image_format format)
{
    for (int i = 0; i < kFew; ++i)
        hasPicture(producer, from + i, format);
    return from + kFew;
}

/** The frame with all that is attached to the producer, but with the file's picture of another position. */
FramePtr frameAgain(mlt_producer producer, mlt_frame asked, mlt_position picture)
{
    mlt_producer_seek(producer, mlt_frame_original_position(asked));
    mlt_frame made = nullptr;
    mlt_service_get_frame(MLT_PRODUCER_SERVICE(producer), &made, 0);
    if (!made)
        return nullptr;
    mlt_properties wanted = MLT_FRAME_PROPERTIES(asked);
    for (int i = 0; i < mlt_properties_count(wanted); ++i) {
        const char* const name = mlt_properties_get_name(wanted, i);
        if (name && std::string_view(name).starts_with("consumer."))
            mlt_properties_pass_property(MLT_FRAME_PROPERTIES(made), wanted, name);
    }
    mlt_properties_set_position(MLT_FRAME_PROPERTIES(made), "original_position", picture);
    return FramePtr(made);
}

/** What an image is made of, as the framework hands it on. */
struct Image {
    uint8_t* data = nullptr;
    mlt_image_format format;
    int width;
    int height;
};

/** Renders the frame with the last picture before it. False when there is none. */
bool renderHeld(Hold& hold, mlt_frame frame, Image& image)
{
    const mlt_position position = mlt_frame_original_position(frame);
    if (hold.lastFound < 0 || hold.lastFound >= position)
        hold.lastFound = findPictureBefore(hold.producer, position, image.format);
    if (hold.lastFound < 0)
        return false;
    const mlt_position last = playToLast(hold.producer, hold.lastFound, image.format);
    const FramePtr again = frameAgain(hold.producer, frame, last);
    uint8_t* made = nullptr;
    if (!again || mlt_frame_get_image(again.get(), &made, &image.format, &image.width, &image.height, 0) != 0 ||
        !made || isTestCard(again.get()))
        return false;
    const int size = mlt_image_format_size(image.format, image.width, image.height, nullptr);
    image.data = static_cast<uint8_t*>(mlt_pool_alloc(size));
    std::memcpy(image.data, made, static_cast<std::size_t>(size));
    mlt_frame_set_image(frame, image.data, size, mlt_pool_release);
    // What converts the picture further on asks the frame how its colours are to be read.
    for (const char* name : {"colorspace", "color_trc", "color_primaries", "full_range", "full_luma", "test_image"})
        mlt_properties_pass_property(MLT_FRAME_PROPERTIES(frame), MLT_FRAME_PROPERTIES(again.get()), name);
    return true;
}

int heldImage(mlt_frame frame, uint8_t** image, mlt_image_format* format, int* width, int* height, int writable)
{
    const auto filter = static_cast<mlt_filter>(mlt_frame_pop_service(frame));
    Hold& hold = *static_cast<Hold*>(filter->child);
    Image held{nullptr, *format, *width, *height};
    const int error = mlt_frame_get_image(frame, image, format, width, height, writable);
    if (!isTestCard(frame) || hold.isSearching)
        return error;
    hold.isSearching = true;
    const bool found = renderHeld(hold, frame, held);
    hold.isSearching = false;
    if (!found)
        return error;
    *image = held.data;
    *format = held.format;
    *width = held.width;
    *height = held.height;
    return 0;
}

mlt_frame prepare(mlt_filter filter, mlt_frame frame)
{
    mlt_frame_push_service(frame, filter);
    mlt_frame_push_get_image(frame, heldImage);
    return frame;
}

} // namespace

std::unique_ptr<Mlt::Filter> attachEndHold(Mlt::Producer& producer)
{
    auto owner = makeOwnFilter(Hold{producer.get_producer()}, prepare);
    if (!owner)
        return nullptr;
    producer.attach(*owner);
    return owner;
}

} // namespace workbench
