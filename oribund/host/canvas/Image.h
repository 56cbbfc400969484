#pragma once

#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/XY.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace oribund
{

/**
 * A picture to draw: the name of an icon, which who draws looks up, or pixels. A cheap value; pixels are shared and
 * never change.
 */
class Image
{
public:
    /** 0xAARRGGBB, not premultiplied, rows from top to bottom without padding. */
    using Pixels = std::vector<std::uint32_t>;

    Image() = default;

    /** An icon of the host's set, for example "settings". Drawn in the colour of text around it. */
    static Image icon(const String& name)
    {
        Image image;
        image.name_ = name;
        return image;
    }

    /** A picture of `size`; empty when the number of pixels does not fit it. */
    static Image fromPixels(const XY<int>& size, Pixels pixels)
    {
        Image image;
        if (size.x > 0 && size.y > 0 && pixels.size() == static_cast<std::size_t>(size.x) * size.y) {
            image.size_ = size;
            image.pixels_ = std::make_shared<const Pixels>(std::move(pixels));
        }
        return image;
    }

    bool empty() const noexcept { return name_.empty() && !pixels_; }

    const String& iconName() const noexcept { return name_; }

    const XY<int>& size() const noexcept { return size_; }

    /** Null for an icon. */
    const Pixels* pixels() const noexcept { return pixels_.get(); }

    /** The same icon, or the very same pixels. */
    bool operator==(const Image&) const = default;

private:
    String name_;
    XY<int> size_;
    std::shared_ptr<const Pixels> pixels_;
};

} // namespace oribund
