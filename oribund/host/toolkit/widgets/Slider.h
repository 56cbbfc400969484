#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/notify/Notifier.h"
#include "oribund/host/toolkit/widgets/SeriesControl.h"

#include <optional>

namespace oribund
{

template <class Widget>
class KeyTable;

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
class ORIBUND_API Slider : public SeriesControl<double>
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

    double getValue() const { return shown(); }

    void setSteps(double step, double page);

    double getStep() const;
    double getPage() const;

    void setOrigin(std::optional<double> origin);

    double origin() const;

    void setResetValue(std::optional<double> value) { resetValue_ = value; }

    bool isDragging() const { return inSeries(); }

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
    /** A double click: sets the reset value, if there is one, instead of what the first click has set. */
    void userReset();

    bool usesKey(const Event& press) const override;
    void describe(AccessibleDescription& description) const override;
    bool accessibleSetNumber(double value, int part = kWhole) override;
    void draw(CanvasRenderer& renderer) override;

protected:
    /** By default it tells edits(). */
    bool handleEdit(const double& value, ChangeKind kind) override;

    /** A click has turned out to be the first of two: its series, ended already, is to count for nothing, as another
        edit takes its place. By default nothing comes of that. */
    virtual void handleSeriesTakenBack();

    bool handleMouseEvent(const Event& event) override;
    bool handleKeyEvent(const Event& event) override;

private:
    static const KeyTable<Slider>& keys();

    struct Grip {
        double x = 0.0;
        double value = 0.0;
        bool fine = false;
    };

    Kt::Box<int> track() const;
    double allowed(double value) const;
    bool press(const Event& event);
    void drag(const Event& event);
    void release();
    void turnWheel(double notches);

    double min_ = 0.0;
    double max_ = 1.0;
    double step_;
    double page_;
    std::optional<double> origin_;
    std::optional<double> resetValue_;
    bool snapToStep_;
    Grip grip_;
    bool clicked_ = false; ///< the last press has led to an edit, and may be the first of a double click
    double wheelRest_ = 0.0;
    Notifier<SliderEvent> edits_;
};

} // namespace oribund
