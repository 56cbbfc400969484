#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace workbench
{

/** A rendered picture: rows from the top, four bytes a pixel (red, green, blue, alpha), no padding. */
struct FrameImage {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> rgba;
    int frame = 0;              ///< of the edit
    std::uint64_t revision = 0; ///< of the state that was rendered, as returned by Engine::load() and update()

    const std::uint8_t* pixel(int x, int y) const
    {
        return rgba.data() +
               4 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x));
    }
};

/** Shared between threads, never changed. */
using FrameImagePtr = std::shared_ptr<const FrameImage>;

} // namespace workbench
