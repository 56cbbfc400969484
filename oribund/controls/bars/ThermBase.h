#pragma once

#include "oribund/controls/bars/ThermGeometry.h"
#include "oribund/host/base/Colour.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/base/XY.h"
#include "oribund/host/toolkit/core/Control.h"

#include <memory>
#include <optional>

namespace oribund
{

template <class Widget>
class KeyTable;

class ThermDrag;

/** How exact a time is asked for. */
enum eAccuracy { eFrameAccurate, eExact };

/**
 * A time bar: stands for a span of time, shows where in it the current time lies and which part of it a companion view
 * shows, and lets the user set the one by click, drag and keys and zoom or move the other.
 *
 * The only value that it edits is a time. Derived classes say which; the window is the owner's, who is asked for
 * another one by a message and answers with set(). User-interface thread only.
 */
class ORIBUND_API ThermBase : public Control
{
public:
    /** What the parent is sent to ask for another window: this text, a blank, and the new length of the window as a
        multiple of the present one; of leastWindow(), where that has no length. The whole range asked for is
       requestedWindow(). */
    static const String resizeZoomWinMsg;

    explicit ThermBase(const InitArgs& args);
    ~ThermBase() override;

    /** Three widget gaps; a lower bar draws only the essentials. Pixels. */
    static int calcHeight();
    static int cueHeight();
    static int cueTolerance();

    bool minimalMode() const { return getHeight() < calcHeight(); }

    /** The span of the bar and the window in it, of which the part inside the span counts. */
    void set(double start, double end, double windowStart, double windowEnd);

    /** With the present width. */
    ThermGeometry geometry() const;

    // As of ThermGeometry.
    double f2x(double t) const { return geometry().f2x(t); }

    int f2xi(double t) const { return geometry().f2xi(t); }

    double f2x_clipped(double t) const { return geometry().f2xClipped(t); }

    int f2xClippedI(double t) const { return geometry().f2xClippedI(t); }

    double f2x(double f, double a, double b, double lo, double hi) const { return geometry().f2x(f, a, b, lo, hi); }

    double x2f(double x) const { return geometry().x2f(x); }

    virtual double getTime(eAccuracy accuracy) const = 0;
    virtual void setTime(double editTime) = 0;

    /** The nearest time that the bar can set; NaN for NaN. */
    virtual double constrainTime(double editTime) const;

    /** Goes to a time that the user has pointed at. Like every way to set a time it ignores NaN. */
    virtual void jumpToPos(double editTime);

    /** Asks the owner for another window. */
    void setWindow(const NumRange<double>& range);

    /** How far the window can be zoomed in. Seconds. */
    virtual double leastWindow() const;

    const NumRange<double>& requestedWindow() const { return requestedWindow_; }

    /** Called before the first and after the last of the time changes that a drag makes; dragState() tells which. */
    virtual void startTimeChangeSeries() {}

    virtual void stopTimeChangeSeries() {}

    /** What is at a point; of `flags` no bit is in use. */
    virtual unsigned doHitTest(const XY<int>& position, unsigned flags = 0) const;

    /** What is being dragged, as a ThermHit; 0 when nothing is. */
    unsigned dragState() const;

    bool allowZoom() const { return allowZoom_; }

    void setAllowZoom(bool allow);

    /** Whether the marker of the current time can be grabbed. */
    void setAllowCurrentTime(bool allow) { allowCurrentTime_ = allow; }

    void setIgnoreMouseClicks(bool ignore) { ignoreMouseClicks_ = ignore; }

    void setViewRegionVisible(bool visible);

    /** A part of the span that is shown as marked. */
    void setMarkedRegion(const std::optional<NumRange<double>>& region);

    /** The time that a point of the bar stands for when the user points at it; before constrainTime(). */
    virtual double snapTime(double editTime) const { return editTime; }

    /** The time as a text, for who does not see the bar; empty where only the derived class's user knows one. */
    virtual WString valueText() const { return {}; }

    MouseCursor contextCursor(const XY<int>& local) const override;
    bool usesKey(const Event& press) const override;
    void describe(AccessibleDescription& description) const override;
    bool accessibleSetNumber(double value, int part = kWhole) override;
    void draw(CanvasRenderer& renderer) override;

protected:
    virtual void drawBackground(CanvasRenderer& renderer);
    virtual void drawViewRegion(CanvasRenderer& renderer);
    virtual void drawWindow(CanvasRenderer& renderer, int x0, int x1);
    virtual void drawMarkedRegion(CanvasRenderer& renderer, double from, double to);

    /** What stands between the ground and the marker of the current time: of a bar that is not low, marks and cues. */
    virtual void drawContents(CanvasRenderer& renderer);

    virtual void drawMarks(CanvasRenderer&) {}

    virtual void drawCues(CanvasRenderer&) {}

    virtual void drawCurrentTime(CanvasRenderer& renderer);

    /** Where the marker of the current time stands; without one there is none. */
    virtual std::optional<double> markedTime() const { return getTime(eExact); }

    /** For derived classes: the current time is another, and nothing else that the bar shows. */
    void currentTimeMoved();

    virtual void drawCueAt(CanvasRenderer& renderer, int x, const Colour& colour);
    void drawMarkAt(CanvasRenderer& renderer, int x);
    void drawTimeAt(CanvasRenderer& renderer, int x);

    /** A shaded diamond of the default size, in the middle of the bar's height. */
    void drawDiamond(CanvasRenderer& renderer, unsigned short x, const Colour& colour);

    /** An arrow at the end of the bar beyond which the current time lies. */
    void drawOutOfRangeIndicator(CanvasRenderer& renderer, bool atEnd);

    virtual Colour getWindowColour() const;
    virtual Colour getOuterWindowColour() const;
    virtual Colour getMarkedRegionColour() const;

    /** How far an arrow key moves the time. */
    virtual double timeStep() const;

    /** A click on the marker or inside the window that has dragged neither. */
    virtual void handleMouseLeft(const Event& event);

    /** A drag is over, whatever has ended it. */
    virtual void handleDragEnd() {}

    /** Whether a press is for the bar: it is active, and clicks are not to be ignored. */
    bool takesPress() const { return !ignoreMouseClicks_ && canInteract(); }

    /** Whether there is anything now whose time could be set. */
    virtual bool hasTime() const { return true; }

    /** Begins a drag of a kind that only a derived class knows; there must be none. */
    void startDrag(const std::shared_ptr<ThermDrag>& drag);

    /** Ends a drag as a release does. Derived classes whose series has to be ended call it in their destructor. */
    void finishDrag();

    /** Takes a drag back. */
    void abortDrag();

    bool handleMouseEvent(const Event& event) override;
    bool handleKeyEvent(const Event& event) override;

private:
    static const KeyTable<ThermBase>& keys();

    void goTo(double editTime) { setTime(constrainTime(editTime)); }

    Kt::Box<int> timeMarkBox() const;
    bool press(const Event& event);
    void release(const Event& event);

    ThermGeometry geometry_;
    NumRange<double> requestedWindow_;
    std::optional<NumRange<double>> markedRegion_;
    Kt::Box<int> timeMark_; ///< where the marker was drawn last
    std::shared_ptr<ThermDrag> drag_;
    int pressX_ = 0;
    bool clickSetsTime_ = false; ///< unless the pointer moves before the release
    bool allowZoom_ = false;
    bool allowCurrentTime_ = true;
    bool ignoreMouseClicks_ = false;
    bool viewRegionVisible_ = true;
};

} // namespace oribund
