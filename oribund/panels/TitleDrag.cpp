#include "oribund/panels/TitleDrag.h"

#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/core/Event.h"

#include <algorithm>
#include <cstdlib>

namespace oribund
{

void TitleDrag::press(const Event& event)
{
    pressedAt_ = event.canvasPosition;
    dragging_ = false;
}

bool TitleDrag::begins(const Event& event) const
{
    if (dragging_ || !pressedAt_ || event.code != EventCode::MouseMove || !events_.hasObservers())
        return false;
    const XY<int> moved = event.canvasPosition - *pressedAt_;
    return std::max(std::abs(moved.x), std::abs(moved.y)) > UifStd::getWidgetGap();
}

bool TitleDrag::react(const Event& event)
{
    if (event.code == EventCode::MouseCancel || event.code == EventCode::MouseRelease)
        pressedAt_.reset();
    if (begins(event)) {
        dragging_ = true;
        tell(TitleDragEvent::Kind::Begun, event.canvasPosition);
        return true;
    }
    if (!dragging_)
        return false;
    if (event.code == EventCode::MouseCancel) {
        cancel();
    } else if (event.code == EventCode::MouseMove) {
        tell(TitleDragEvent::Kind::Moved, event.canvasPosition);
    } else if (event.code == EventCode::MouseRelease) {
        dragging_ = false;
        tell(TitleDragEvent::Kind::Dropped, event.canvasPosition);
    }
    return true;
}

void TitleDrag::cancel()
{
    pressedAt_.reset();
    if (!dragging_)
        return;
    dragging_ = false;
    tell(TitleDragEvent::Kind::Cancelled, {});
}

void TitleDrag::tell(TitleDragEvent::Kind kind, const XY<int>& at)
{
    events_.notify({kind, &panel_, at});
}

} // namespace oribund
