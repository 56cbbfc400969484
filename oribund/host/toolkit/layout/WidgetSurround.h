#pragma once

namespace oribund
{

/** The space that a widget keeps free around itself in its container, in logical pixels. */
struct WidgetSurround {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    /** The widget's right edge follows that of the container's user area. */
    bool followWidth = false;

    constexpr bool operator==(const WidgetSurround&) const = default;
};

} // namespace oribund
