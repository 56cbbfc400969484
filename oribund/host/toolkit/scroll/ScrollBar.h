#pragma once

#include "oribund/host/base/Box.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/notify/Notifier.h"
#include "oribund/host/toolkit/core/Control.h"

namespace oribund
{

template <class Widget>
class KeyTable;

class ScrollBar;

/** What the user does with a scroll bar. */
struct ScrollBarEvent {
    /** The numbers are fixed. */
    enum class Kind { Move = 0, Page = 2, DragEnd = 3 };

    /** Valid when the call begins. */
    ScrollBar* bar = nullptr;
    Kind kind = Kind::Move;
    /** Where the thumb is now. */
    double position = 0.0;
};

/**
 * An upright scroll bar. Its thumb stands for the part of something that is in view: position and size are parts of the
 * whole, from 0 to 1, the position that of the thumb's upper end.
 *
 * The thumb is dragged, a press beside it goes on by a page, the wheel and, while the bar has the keyboard, the arrow
 * keys by a step. Escape puts a dragged thumb back. What the user does is told; setThumb() is not.
 */
class ORIBUND_API ScrollBar : public Control
{
public:
    struct InitArgs : GlobCreationInfo {
        using GlobCreationInfo::GlobCreationInfo;

        /** Whether it takes the keyboard: not where what it scrolls has keys for that. */
        bool focusable = true;
    };

    explicit ScrollBar(const InitArgs& args);

    /** Clamped: the size to 0..1, the position so that the thumb ends within the bar. NaN is ignored. */
    void setThumb(double position, double size);

    double getThumbPosition() const { return position_; }

    double getThumbSize() const { return size_; }

    /** What an arrow key and a notch of the wheel move; by default a tenth of the thumb. */
    void setStep(double step);

    double getStep() const { return step_ > 0.0 ? step_ : size_ / 10.0; }

    /** Where the thumb is drawn, in the bar's coordinates; empty where there is nothing to scroll. */
    Kt::Box<int> thumbBox() const;

    bool isDragging() const { return dragged_; }

    Notifier<ScrollBarEvent>& events() { return events_; }

    // What the user does
    void userMove(double position);
    void userPage(int pages);
    /** False where the bar ends. */
    bool userStep(double steps);

    bool usesKey(const Event& press) const override;
    void describe(AccessibleDescription& description) const override;
    bool accessibleSetNumber(double value, int part = kWhole) override;
    void draw(CanvasRenderer& renderer) override;

protected:
    bool handleMouseEvent(const Event& event) override;
    bool handleKeyEvent(const Event& event) override;

private:
    static const KeyTable<ScrollBar>& keys();
    bool go(double position, ScrollBarEvent::Kind kind);
    void press(const Event& event);
    void drag(int y);
    void endDrag(bool cancelled);

    double position_ = 0.0;
    double size_ = 1.0;
    double step_ = 0.0;
    double positionAtPress_ = 0.0;
    int pressedY_ = 0;
    bool dragged_ = false;
    Notifier<ScrollBarEvent> events_;
};

} // namespace oribund
