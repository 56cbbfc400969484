#include "oribund/host/toolkit/core/WidgetPosition.h"

#include "oribund/host/canvas/UifStd.h"

namespace oribund
{

WidgetPosition WidgetPosition::userTopLeft(int x, int y)
{
    return {Anchor::UserTopLeft, {x, y}, nullptr};
}

WidgetPosition WidgetPosition::userTopRight(int x, int y)
{
    return {Anchor::UserTopRight, {x, y}, nullptr};
}

WidgetPosition WidgetPosition::below(const Glob& other, int gap)
{
    return {Anchor::Below, {0, gap}, &other};
}

WidgetPosition WidgetPosition::below(const Glob& other)
{
    return below(other, UifStd::getRowGap());
}

WidgetPosition WidgetPosition::rightOf(const Glob& other, int gap)
{
    return {Anchor::RightOf, {gap, 0}, &other};
}

WidgetPosition WidgetPosition::rightOf(const Glob& other)
{
    return rightOf(other, UifStd::getWidgetGap());
}

WidgetPosition WidgetPosition::leftOf(const Glob& other, int gap)
{
    return {Anchor::LeftOf, {gap, 0}, &other};
}

} // namespace oribund
