#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/XY.h"
#include "oribund/host/notify/Notifier.h"

#include <optional>

namespace oribund
{

class EffectComponentPanel;
class Event;

/** What the user does with a panel that is dragged by its title. */
struct TitleDragEvent {
    enum class Kind { Begun, Moved, Dropped, Cancelled };

    Kind kind = Kind::Begun;
    /** Valid when the call begins. */
    EffectComponentPanel* panel = nullptr;
    /** The pointer, in coordinates of the canvas; of no meaning when cancelled. */
    XY<int> canvasPosition;
};

/**
 * Tells a press of a panel's title that becomes a drag from a click: it does once the pointer has moved farther than a
 * widget gap. Nothing is dragged where nobody listens.
 */
class ORIBUND_API TitleDrag
{
public:
    explicit TitleDrag(EffectComponentPanel& panel)
        : panel_(panel)
    {
    }

    /** Who reorders the panels of a stack listens; what it does may destroy the panel. */
    Notifier<TitleDragEvent>& events() { return events_; }

    bool isDragging() const { return dragging_; }

    /** The left button was pressed on the title. */
    void press(const Event& event);

    /** Whether this event of the mouse makes a drag of the press. */
    bool begins(const Event& event) const;

    /** An event of the mouse after a press; true when it belongs to a drag, and means nothing else to the panel. */
    bool react(const Event& event);

    /** Ends what was begun, without effect. */
    void cancel();

private:
    void tell(TitleDragEvent::Kind kind, const XY<int>& at);

    EffectComponentPanel& panel_;
    std::optional<XY<int>> pressedAt_; ///< on the canvas
    bool dragging_ = false;
    Notifier<TitleDragEvent> events_;
};

} // namespace oribund
