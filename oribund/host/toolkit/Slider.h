#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/notify/Notifier.h"
#include "oribund/host/toolkit/Control.h"
#include "oribund/host/toolkit/EditSeries.h"

#include <optional>

namespace oribund
{

class Slider;

/** An edit that the user made with a slider. */
struct SliderEvent {
    /** Valid when the call begins. */
    Slider* slider = nullptr;
    double value = 0.0;
    ChangeKind kind = ChangeKind::Single;
};

/**
 * A horizontal bar on which a number is set by dragging, by the keyboard, or by the wheel while it has the keyboard.
 *
 * A drag is one series of edits. While it lasts the slider stays under the pointer: a value that is set meanwhile is
 * shown at its end. Escape gives the drag up. With Shift a drag moves a tenth as far.
 */
class ORIBUND_API Slider : public Control
{
public:
    struct InitArgs : GlobCreationInfo {
        using GlobCreationInfo::GlobCreationInfo;

        double min = 0.0;
        double max = 1.0;
        double value = 0.0;
        /** What an arrow key changes; 0 for a hundredth of the range. */
        double step = 0.0;
        /** What a page key changes; 0 for a tenth of the range. */
        double page = 0.0;
        /** Where the bar's fill begins; without one at 0, or at the end nearest to it. */
        std::optional<double> origin;
        /** What a double click sets. */
        std::optional<double> resetValue;
        /** Whether only whole steps from the minimum can be set. */
        bool snapToStep = false;
    };

    explicit Slider(const InitArgs& args);

    /** A range that is empty, backwards or not finite is ignored. Does not change the value. */
    void setRange(double min, double max);

    double getMin() const { return min_; }

    double getMax() const { return max_; }

    /** Shows a value; one outside the range is kept and shown at its end, NaN is ignored. */
    void setValue(double value, eRedrawFlag redrawFlag = eRedrawFlag::Yes);

    double getValue() const { return value_; }

    void setSteps(double step, double page);

    double getStep() const;
    double getPage() const;

    void setOrigin(std::optional<double> origin);

    double origin() const;

    void setResetValue(std::optional<double> value) { resetValue_ = value; }

    bool isDragging() const { return series_.isOpen(); }

    /** The value of a place along the slider, and the other way round; in its own coordinates. */
    double valueAt(double x) const;
    double xOf(double value) const;

    Notifier<SliderEvent>& edits() { return edits_; }

    // What the user does. Values are clamped to the range.
    void userPress(double value);
    void userDrag(double value);
    void userRelease();
    void userCancel();
    /** Steps up or, if negative, down; each call is an edit by itself. */
    void userStep(int steps);
    void userPage(int pages);
    void userSet(double value);

    void draw(CanvasRenderer& renderer) override;
    std::unique_ptr<GlobPeer> makePeer(Skin& skin) override;

protected:
    /** Makes an edit; false when it is refused. As it stands it tells edits(). May destroy the slider. */
    virtual bool handleEdit(double value, ChangeKind kind);

    /** A drag has ended after at least one edit. */
    virtual void handleSeriesEnd();

    /** A drag was given up after at least one edit; as it stands it asks for the value that it began with. */
    virtual void handleSeriesCancel(double original);

    bool handleMouseEvent(const Event& event) override;
    bool handleKeyEvent(const Event& event) override;

private:
    struct Grip {
        double x = 0.0;
        double value = 0.0;
        bool fine = false;
    };

    Kt::Box<int> track() const;
    double allowed(double value) const;
    void edit(double value, ChangeKind kind);
    void show(double value);
    bool press(const Event& event);
    void drag(const Event& event);
    void finish(bool cancelled);

    double min_ = 0.0;
    double max_ = 1.0;
    double value_ = 0.0;
    double step_;
    double page_;
    std::optional<double> origin_;
    std::optional<double> resetValue_;
    bool snapToStep_;
    EditSeries<double> series_;
    Grip grip_;
    double wheelRest_ = 0.0;
    Notifier<SliderEvent> edits_;
};

} // namespace oribund
