#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/XY.h"

namespace oribund
{

class Glob;

/**
 * Where a widget stands in its container: at a place in the container's user area, or beside another widget that was
 * added before it. A container keeps the position and resolves it again whenever something changes size.
 */
struct ORIBUND_API WidgetPosition {
    enum class Anchor {
        UserTopLeft,
        UserTopRight, ///< the widget's right edge `offset.x` left of the area's
        Below,        ///< left edges flush, unless moved by the offset
        RightOf,      ///< top edges flush, unless moved by the offset
        LeftOf,
    };

    Anchor anchor = Anchor::UserTopLeft;
    /** Right and down; with UserTopRight and LeftOf x counts to the left. */
    XY<int> offset;
    /** The widget to stand beside; must be in the same container. */
    const Glob* relativeTo = nullptr;

    static WidgetPosition userTopLeft(int x, int y);
    static WidgetPosition userTopRight(int x, int y);
    static WidgetPosition below(const Glob& other, int gap);
    static WidgetPosition below(const Glob& other);
    static WidgetPosition rightOf(const Glob& other, int gap);
    static WidgetPosition rightOf(const Glob& other);
    static WidgetPosition leftOf(const Glob& other, int gap);
};

} // namespace oribund
