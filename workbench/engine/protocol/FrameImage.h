#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

namespace workbench
{

/** Of a picture with four bytes a pixel. */
constexpr std::size_t byteCount(int width, int height)
{
    return std::size_t{4} * static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

/** Bytes that several pictures may share, wherever they are: in this process or in memory that it has with another. */
class PixelBytes
{
public:
    using value_type = std::uint8_t;
    using const_iterator = const std::uint8_t*;

    PixelBytes() = default;

    PixelBytes(std::shared_ptr<const std::uint8_t[]> bytes, std::size_t size)
        : bytes_(std::move(bytes))
        , size_(size)
    {
    }

    const std::uint8_t* data() const { return bytes_.get(); }

    std::size_t size() const { return size_; }

    bool empty() const { return size_ == 0; }

    const_iterator begin() const { return data(); }

    const_iterator end() const { return data() + size_; }

    std::uint8_t operator[](std::size_t index) const { return bytes_.get()[index]; }

    bool operator==(const PixelBytes& other) const { return std::equal(begin(), end(), other.begin(), other.end()); }

private:
    std::shared_ptr<const std::uint8_t[]> bytes_;
    std::size_t size_ = 0;
};

/** A rendered picture: rows from the top, four bytes a pixel (red, green, blue, alpha), no padding. */
struct FrameImage {
    int width = 0;
    int height = 0;
    PixelBytes rgba;
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
