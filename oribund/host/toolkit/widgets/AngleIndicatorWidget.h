#pragma once

#include "oribund/host/base/Colour.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/toolkit/layout/StandardPanel.h"
#include "oribund/host/toolkit/layout/TabOrderable.h"
#include "oribund/host/toolkit/widgets/SeriesControl.h"

#include <vector>

namespace oribund
{

template <class Widget>
class KeyTable;

extern template class SeriesControl<double, StandardPanel>;

/**
 * A dial that shows an angle: 0 degrees is up, positive ones go clockwise. Turning it with the pointer goes on past
 * whole turns. A drag is one series of edits; Escape gives it up, Shift makes it snap to every 15 degrees. Arrow keys
 * change the angle by 1 degree, with Shift by 10.
 *
 * It holds an angle of its own; a dial that is bound to something else overrides the four hooks.
 */
class ORIBUND_API AngleIndicatorWidget : public SeriesControl<double, StandardPanel>, public TabOrderable
{
public:
    struct InitArgs : GlobCreationInfo {
        using GlobCreationInfo::GlobCreationInfo;
    };

    explicit AngleIndicatorWidget(const InitArgs& args);

    Glob& tabGlob() override { return *this; }

    /** Shows an angle in degrees; during a drag when that has ended. NaN is ignored. */
    void setAngle(double degrees, eRedrawFlag redrawFlag = eRedrawFlag::Yes);

    bool isDragging() const { return inSeries(); }

    /** The angle drawn. */
    double getAngle() const { return getStoredValue(); }

    /** The direction of a point of the dial seen from its middle, from -180 to 180 degrees. */
    double angleAt(const XY<int>& local) const;

    // What the user does; directions as from angleAt().
    void userPress(double direction);
    void userDrag(double direction, bool snap = false);
    void userRelease();
    void userCancel();
    void userStep(double degrees);
    void userSet(double degrees);

    void getTabOrderables(std::vector<TabOrderable*>& stops) override;
    bool usesKey(const Event& press) const override;
    void describe(AccessibleDescription& description) const override;
    bool accessibleSetNumber(double value, int part = kWhole) override;
    void draw(CanvasRenderer& renderer) override;

protected:
    /** The angle from which an edit starts. */
    virtual double getIndicatorValue();

    /** Makes an edit; false when it is refused. May destroy the dial. */
    virtual bool setIndicatorValue(double degrees, ChangeKind kind);

    /** The angle to draw. */
    virtual double getStoredValue() const;

    virtual Colour getIndicatorColour() const;

    bool handleEdit(const double& degrees, ChangeKind kind) final;
    bool handleMouseEvent(const Event& event) override;
    bool handleKeyEvent(const Event& event) override;

private:
    static const KeyTable<AngleIndicatorWidget>& keys();
    XY<double> centre() const;
    double radius() const;

    double turned_ = 0.0; ///< the angle under the pointer, whole turns included
    double lastDirection_ = 0.0;
};

} // namespace oribund
