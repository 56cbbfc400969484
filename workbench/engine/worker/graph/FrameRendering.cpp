#include "workbench/engine/worker/graph/FrameRendering.h"

#include <mlt++/Mlt.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace workbench
{

namespace
{

// How much smaller than the space a picture may be, in pixels, so as to have the profile's shape.
constexpr int kMostLost = 32;

int evenAtLeastTwo(double value)
{
    return std::max(2, 2 * static_cast<int>(std::lround(value / 2.0)));
}

/** Whether a clip of the profile's shape fills a picture of this size. The framework fits clips by sums that round
 * down, and leaves a black line where they do not come out even; these are its sums. */
bool isFilled(const Mlt::Profile& profile, FrameSize size)
{
    auto& asked = const_cast<Mlt::Profile&>(profile);
    const int width = asked.width();
    const int height = asked.height();
    const double ratio = static_cast<double>(width) / height * size.height / size.width;
    return std::lround(ratio * width) >= width && std::lround(height / ratio) >= height;
}

} // namespace

FrameSize fitFrame(Mlt::Profile& profile, int maxWidth, int maxHeight)
{
    const double width = profile.width();
    const double height = profile.height();
    if (maxWidth <= 0 || maxHeight <= 0)
        return {profile.width(), profile.height()};
    const double scale = std::min({1.0, maxWidth / (width * profile.sar()), maxHeight / height});
    const auto sizeOf = [&](int across) { return FrameSize{across, evenAtLeastTwo(across * height / width)}; };
    const FrameSize largest = sizeOf(evenAtLeastTwo(width * scale));
    for (int lost = 0; lost <= std::min(kMostLost, largest.width / 4); lost += 2)
        if (const FrameSize size = sizeOf(largest.width - lost); isFilled(profile, size))
            return size;
    return largest;
}

std::shared_ptr<std::uint8_t[]> ownMemory(int width, int height)
{
    return std::make_shared_for_overwrite<std::uint8_t[]>(byteCount(width, height));
}

std::shared_ptr<FrameImage> copyImage(Mlt::Frame& frame, int width, int height, const PictureMemory& memory)
{
    mlt_image_format format = mlt_image_rgba;
    const uint8_t* source = frame.get_image(format, width, height);
    if (!source || format != mlt_image_rgba || width <= 0 || height <= 0)
        return nullptr;
    std::shared_ptr<std::uint8_t[]> bytes = memory(width, height);
    if (!bytes)
        return nullptr;
    const std::size_t size = byteCount(width, height);
    std::copy_n(source, size, bytes.get());
    auto image = std::make_shared<FrameImage>();
    image->width = width;
    image->height = height;
    image->rgba = PixelBytes(std::move(bytes), size);
    image->frame = frame.get_position();
    return image;
}

std::shared_ptr<FrameImage> renderFrame(Mlt::Producer& producer, int position, FrameSize size,
                                        const PictureMemory& memory)
{
    producer.set_speed(0.0);
    producer.seek(position);
    const std::unique_ptr<Mlt::Frame> frame(producer.get_frame());
    if (!frame || !frame->is_valid())
        return nullptr;
    frame->set("consumer.rescale", "bilinear");
    frame->set("consumer.progressive", 1);
    std::shared_ptr<FrameImage> image = copyImage(*frame, size.width, size.height, memory);
    if (image)
        image->frame = position;
    return image;
}

} // namespace workbench
