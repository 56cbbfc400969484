#pragma once

#include "workbench/engine/protocol/FrameImage.h"

#include <cstdint>
#include <functional>
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

/** Where the bytes of a picture are put. It gives null when there is no room. */
using PictureMemory = std::function<std::shared_ptr<std::uint8_t[]>(int width, int height)>;

/** Memory of this process alone. */
std::shared_ptr<std::uint8_t[]> ownMemory(int width, int height);

/** The picture of a frame, in that size or, for 0, in the one in which it was rendered. Empty when it has none. */
std::shared_ptr<FrameImage> copyImage(Mlt::Frame& frame, int width, int height,
                                      const PictureMemory& memory = ownMemory);

/** Renders one frame of a producer that nobody plays. Empty when there is no picture. */
std::shared_ptr<FrameImage> renderFrame(Mlt::Producer& producer, int frame, FrameSize size,
                                        const PictureMemory& memory = ownMemory);

} // namespace workbench
