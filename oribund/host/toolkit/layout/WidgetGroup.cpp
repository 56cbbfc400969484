#include "oribund/host/toolkit/layout/WidgetGroup.h"

#include <algorithm>

namespace oribund
{

WidgetGroup::WidgetGroup(const InitArgs& args)
    : StandardPanel(args)
{
}

void WidgetGroup::resize(double width, double)
{
    RedrawHold hold;
    GlobRef<WidgetGroup> self(this);
    const XY<int> old = getSize();
    applySize(width, getHeight());
    relayout();
    if (!self)
        return;
    applySize(width, calcHeight());
    if (getSize() != old)
        tellParentOfResize(old);
}

int WidgetGroup::calcHeight() const
{
    return contentBottom();
}

void WidgetGroup::contentsChanged()
{
    resize(getWidth(), getHeight());
}

} // namespace oribund
