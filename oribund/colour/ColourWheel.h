#pragma once

#include "oribund/host/base/ColourData.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/canvas/Image.h"
#include "oribund/host/toolkit/values/ValControl.h"
#include "oribund/host/toolkit/widgets/SeriesControl.h"

namespace oribund
{

/**
 * A wheel on which a colour offset is set: its direction is the hue towards which red, green and blue are moved apart,
 * its distance from the middle how far. What all three have in common, the level, stays.
 *
 * A drag is one series of edits, Escape gives it up, and with Shift it goes a tenth as far. Arrow keys move the offset
 * by a hundredth of the radius, with Shift ten times as far, with Ctrl a tenth; Home, or a double click, takes it away.
 * User-interface thread only.
 */
class ORIBUND_API ColourWheel : public ValControl<SeriesControl<ColourData>, ColourData>
{
public:
    struct InitArgs : GlobCreationInfo {
        using GlobCreationInfo::GlobCreationInfo;
    };

    explicit ColourWheel(const InitArgs& args);
    ~ColourWheel() override;

    /** The offset at the rim. Ignored unless above 0. */
    void setReach(double reach);

    double getReach() const { return reach_; }

    /** Where the offset stands on the wheel, as ColourOffset has it. */
    XY<double> getPoint() const;

    // What the user does; places on the wheel, of which one beyond the rim is taken back to it. Nothing while it cannot
    // interact.
    void userPress();
    void userDrag(const XY<double>& point);
    void userRelease();
    void userCancel();
    /** One edit by itself. */
    void userSetPoint(const XY<double>& point);

    void setWidgetValue(const ColourData& offset, eRedrawFlag flag) override;

    ColourData getWidgetValue() const override { return shown(); }

    bool usesKey(const Event& press) const override;
    void describe(AccessibleDescription& description) const override;

    int accessiblePartCount() const override { return kParts; }

    void describePart(int part, AccessibleDescription& description) const override;
    bool accessibleSetNumber(double value, int part = kWhole) override;
    void draw(CanvasRenderer& renderer) override;

protected:
    bool handleEdit(const ColourData& offset, ChangeKind kind) override;
    void handleSeriesEnd() override;
    void handleSeriesCancel(const ColourData& original) override;
    bool handleMouseEvent(const Event& event) override;
    bool handleKeyEvent(const Event& event) override;

private:
    /** Direction and strength. */
    static constexpr int kParts = 2;

    struct Grip {
        XY<double> at;   ///< the pointer, on the wheel
        XY<double> from; ///< the offset
        bool fine = false;
    };

    XY<double> middle() const;
    double radius() const;
    XY<double> onWheel(const XY<int>& local) const;
    XY<double> withinRim(const XY<double>& point) const;
    bool press(const Event& event);
    void drag(const Event& event);
    const Image& disc();

    double reach_ = 1.0;
    Grip grip_;
    Image disc_; ///< of the present size
};

} // namespace oribund
