#include "workbench/engine/FrameRendering.h"

#include <mlt++/Mlt.h>

#include <algorithm>
#include <cmath>

namespace workbench
{

namespace
{

int evenAtLeastTwo(double value)
{
    return std::max(2, 2 * static_cast<int>(std::lround(value / 2.0)));
}

} // namespace

FrameSize fitFrame(Mlt::Profile& profile, int maxWidth, int maxHeight)
{
    const double width = profile.width();
    const double height = profile.height();
    const double shownWidth = width * profile.sar();
    if (maxWidth <= 0 || maxHeight <= 0)
        return {profile.width(), profile.height()};
    const double scale = std::min({1.0, maxWidth / shownWidth, maxHeight / height});
    return {evenAtLeastTwo(shownWidth * scale), evenAtLeastTwo(height * scale)};
}

std::shared_ptr<FrameImage> copyImage(Mlt::Frame& frame, int width, int height)
{
    mlt_image_format format = mlt_image_rgba;
    const uint8_t* source = frame.get_image(format, width, height);
    if (!source || format != mlt_image_rgba || width <= 0 || height <= 0)
        return nullptr;
    auto image = std::make_shared<FrameImage>();
    image->width = width;
    image->height = height;
    image->rgba.assign(source, source + static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4);
    image->frame = frame.get_position();
    return image;
}

std::shared_ptr<FrameImage> renderFrame(Mlt::Producer& producer, int position, FrameSize size)
{
    producer.set_speed(0.0);
    producer.seek(position);
    const std::unique_ptr<Mlt::Frame> frame(producer.get_frame());
    if (!frame || !frame->is_valid())
        return nullptr;
    frame->set("consumer.rescale", "bilinear");
    frame->set("consumer.progressive", 1);
    std::shared_ptr<FrameImage> image = copyImage(*frame, size.width, size.height);
    if (image)
        image->frame = position;
    return image;
}

} // namespace workbench
