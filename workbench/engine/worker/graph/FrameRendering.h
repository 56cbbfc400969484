#pragma once

#include "workbench/engine/protocol/FrameImage.h"

#include <memory>

namespace Mlt
{
class Frame;
class Producer;
class Profile;
} // namespace Mlt

namespace workbench
{

struct FrameSize {
    int width;
    int height;
};

/** The largest picture of the profile's shape that fits into a space, at most the profile's own size; even numbers. */
FrameSize fitFrame(Mlt::Profile& profile, int maxWidth, int maxHeight);

/** The picture of a frame, in that size or, for 0, in the one in which it was rendered. Empty when it has none. */
std::shared_ptr<FrameImage> copyImage(Mlt::Frame& frame, int width, int height);

/** Renders one frame of a producer that nobody plays. Empty when there is no picture. */
std::shared_ptr<FrameImage> renderFrame(Mlt::Producer& producer, int frame, FrameSize size);

} // namespace workbench
