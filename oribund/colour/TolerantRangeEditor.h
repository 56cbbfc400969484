#pragma once

#include "oribund/colour/RangeGeometry.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/base/text/NumberFormat.h"
#include "oribund/host/toolkit/values/ValControl.h"
#include "oribund/host/toolkit/widgets/SeriesControl.h"

#include <array>
#include <optional>
#include <vector>

namespace oribund
{

class RangeEntry;

/**
 * A strip on which a soft range is set: two handles at the top for the fully selected band, two at the bottom for its
 * soft edges. What lies between them can be dragged as well: an edge with its softness, or the whole range.
 *
 * A drag is one series of edits, Escape gives it up, and with Shift it goes a tenth as far. The Tab key goes from
 * handle to handle and then to the whole range; arrow keys move what it is at, with Shift ten times as far, with Ctrl a
 * tenth. A double click on a handle, or Enter, lets the user type its number. User-interface thread only.
 */
class ORIBUND_API TolerantRangeEditor : public ValControl<SeriesControl<ColourData>, ColourData>
{
public:
    struct InitArgs : GlobCreationInfo {
        using GlobCreationInfo::GlobCreationInfo;
    };

    /** As high as calcHeight(). On an axis from 0 to 1, with all of it selected. */
    TolerantRangeEditor(unsigned short width, const Palette& palette, Canvas* canvas);
    explicit TolerantRangeEditor(const InitArgs& args);
    ~TolerantRangeEditor() override;

    static ColourData makeRange(double a, double b, double c, double d) { return {{a, b, c, d}}; }

    static int calcHeight();

    /** Shows a range, during a drag when that has ended; one that is not of usable numbers is ignored. */
    void setRangeDefinition(const ColourData& range, eRedrawFlag redrawFlag = eRedrawFlag::Yes);

    const ColourData& getRanges() const { return shown(); }

    /** What the strip's whole width stands for on an axis from 0. Ignored unless above 0. */
    void setScale(double scale);

    /** Makes the axis circular: the strip shows `span` of a circle of `period`, with the range in its middle. */
    void setCircularValue(double span, double period);

    const RangeAxis& axis() const { return axis_; }

    /** How numbers are shown and typed, and what an arrow key adds; 0 for a hundredth of the scale. */
    void setNumbers(const NumberFormat& format, double step);

    double getStep() const;

    /** What the menu's reset sets; without one there is none. */
    void setResetValue(const std::optional<ColourData>& range) { resetValue_ = range; }

    bool getMouseOver() const { return isHot(); }

    /** Where a handle stands, bottom-up. */
    RangeGeometry::Box getNobbleArea(std::size_t handle) const { return geometry().nobbleArea(handle); }

    /** Points bottom-up; -1 for none. */
    int findNobbleAtPos(const XY<double>& at) const { return geometry().nobbleAt(at); }

    int findSectionAtPos(const XY<double>& at) const { return geometry().sectionAt(at); }

    /** What a component is called. */
    virtual UIString componentName(std::size_t component) const;

    /** The number of a component as a person reads and types it: on a circular axis within a turn. */
    double componentNumber(std::size_t component) const;

    WString componentText(std::size_t component) const { return format_.textOf(componentNumber(component)); }

    const NumberFormat& getFormat() const { return format_; }

    // What the user does; along the axis. Nothing while the strip cannot interact.
    void userPress(RangePart part);
    void userDrag(double distance);
    void userRelease();
    void userCancel();
    /** One edit by itself, as far as it goes. */
    void userMove(RangePart part, double distance);
    /** One edit, which brings a component as near to a number as it goes. */
    void userSetComponent(std::size_t component, double value);
    void userReset();
    /** Opens an entry over a handle. */
    void userEnterNumber(std::size_t component);
    /** Takes the keyboard at a handle. */
    void userGoTo(std::size_t component);

    void setWidgetValue(const ColourData& range, eRedrawFlag flag) override;

    ColourData getWidgetValue() const override { return getRanges(); }

    UIString tooltip() const override;
    MouseCursor contextCursor(const XY<int>& local) const override;
    bool usesKey(const Event& press) const override;
    void describe(AccessibleDescription& description) const override;

    int accessiblePartCount() const override { return kStops; }

    void describePart(int part, AccessibleDescription& description) const override;
    int accessiblePartAt(const XY<int>& local) const override;

    int currentAccessiblePart() const override { return current_; }

    bool accessibleSetNumber(double value, int part = kWhole) override;
    void draw(CanvasRenderer& renderer) override;

protected:
    /** The strip and its marks, behind the range. */
    void drawBackground(CanvasRenderer& renderer);
    /** The strip itself, by default of one colour. */
    virtual void drawBackgroundInternal(CanvasRenderer& renderer, const Kt::Box<double>& strip);
    /** Adds what is to be filled as marks of the scale, top-down; by default quarters. */
    virtual void drawGraticule(std::vector<Kt::Box<double>>& marks);

    /** The range on the strip; by default its slopes, with what is not selected dim. */
    virtual void drawRange(CanvasRenderer& renderer);

    /** The lines from the handles at the bottom to those at the top. */
    void drawSlopes(CanvasRenderer& renderer) const;

    /** The middles of the handles. */
    std::array<double, ColourData::size()> handlesX() const;

    /** Whether whole turns count now, as between keyframes; else they are left out of what an edit starts from. */
    virtual bool keepsTurns() const { return false; }

    /** Where the strip is drawn, top-down, in whole pixels. */
    Kt::Box<double> stripBox() const;

    /** Shows a range and hands it to the adaptor. May destroy the editor. */
    void setValue(const ColourData& range) { edit(range); }

    bool handleEdit(const ColourData& range, ChangeKind kind) override;
    void handleSeriesEnd() override;
    void handleSeriesCancel(const ColourData& original) override;
    bool handleMouseEvent(const Event& event) override;
    bool handleKeyEvent(const Event& event) override;
    void handleFocusEvent(bool gained) override;

    bool hasMenu() const override { return canInteract(); }

    void reviewMenu(const Event* event) override;
    /** The pointer has come or gone. */
    virtual void handleMouseContainment(bool over);

private:
    /** Stops of the Tab key: the handles, then the range as a whole. */
    static constexpr int kStops = 5;
    static constexpr int kWholeRange = 4;

    struct Grip {
        RangePart part;
        ColourData from;
        double x = 0.0;
        bool fine = false;
    };

    static RangePart partOf(int stop);
    static int stopOf(RangePart part);
    RangeGeometry geometry() const;
    XY<double> bottomUp(const XY<int>& local) const;
    ColourData editable(const ColourData& range) const;
    double numberOf(int stop) const;
    std::size_t handleNear(double x) const;
    bool press(const Event& event);
    void drag(const Event& event);
    void hover(int handle);
    void setCurrent(int stop);
    void drawNobble(CanvasRenderer& renderer, std::size_t handle) const;

    RangeAxis axis_;
    NumberFormat format_;
    double step_ = 0.0;
    std::optional<ColourData> resetValue_;
    Grip grip_;
    int current_ = 0;
    int hovered_ = RangeGeometry::kNone;
    RangeEntry* entry_ = nullptr; ///< a child, made when it is first wanted
};

} // namespace oribund
