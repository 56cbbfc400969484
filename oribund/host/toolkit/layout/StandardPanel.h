#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/canvas/Border.h"
#include "oribund/host/toolkit/core/MenuGlob.h"
#include "oribund/host/toolkit/layout/TabOrderManager.h"
#include "oribund/host/toolkit/layout/TabOrderableHost.h"
#include "oribund/host/toolkit/layout/WidgetSurround.h"

#include <concepts>
#include <memory>
#include <vector>

namespace oribund
{

/**
 * A panel with a border and widgets inside. It remembers where each widget was put and places all of them again, in the
 * order in which they were added, when it or one of them changes size or visibility. A hidden widget takes no room:
 * what stands below it moves up.
 */
class ORIBUND_API StandardPanel : public MenuGlob, public TabOrderManager, public TabOrderableHost
{
public:
    explicit StandardPanel(const GlobCreationInfo& info);
    ~StandardPanel() override;

    /** Adds a widget at a position; the panel owns it. Returns it. */
    template <std::derived_from<Glob> T>
    T* addWidget(std::unique_ptr<T> widget, const WidgetPosition& position, const WidgetSurround& surround = {})
    {
        T* raw = widget.get();
        place(std::move(widget), position, surround);
        return raw;
    }

    /** Destroys a widget that was added; what stands beside it is then placed in relation to what it stood beside. */
    void destroyWidget(Glob& widget);

    /** The widget added last and still there; null in an empty panel. */
    Glob* previousWidget() const;

    /** Moves a widget that was added to another position. */
    void setWidgetPosition(Glob& widget, const WidgetPosition& position);

    /**
     * Puts widgets that were added one below the other in this order, where the first of them stands now; what stood
     * below one of them stands below the last. Tab visits them in that order, too. `gap` lies between two.
     */
    void stackWidgets(const std::vector<Glob*>& order, int gap);

    const Border& getBorder() const { return border_; }

    void setBorder(const Border& border);

    /** Where widgets stand: what the border leaves, in the panel's own coordinates. */
    virtual Kt::Box<int> getUserArea() const;

    /** For what stands in a title row: the panel's palette with the heading colour for text. */
    virtual Palette makeTitleAreaPalette() const;

    /** Whether a container that folds away its contents may do so with this widget. */
    virtual bool widgetVisibilityCanChange(const Glob* widget) const;

    /** The stops of its own tab order; without any those of the widgets in it. */
    void getTabOrderables(std::vector<TabOrderable*>& stops) override;

    using Glob::resize;
    void resize(double width, double height) override;
    void setActive(bool active, eRedrawFlag redrawFlag = eRedrawFlag::Yes) override;
    void describe(AccessibleDescription& description) const override;
    void draw(CanvasRenderer& renderer) override;

protected:
    virtual void drawBorder(CanvasRenderer& renderer);

    /** Places the widgets for the present size. */
    virtual void layoutChildren();

    void handleChildResize(const Glob* child, const XY<int>& oldSize) override;
    void handleChildrenChanged(Glob* child) override;
    void handleChildRemoved(const Glob* child) override;

    /** Called when the widgets have to be placed again; groups follow with their own size. */
    virtual void contentsChanged();

    /** Calls layoutChildren() once, with the notifications that it causes held back. */
    void relayout();

    /** From here to endLayoutHold() what happens to the widgets does not lead to contentsChanged(). Calls nest. */
    void beginLayoutHold() { ++layoutHolds_; }

    void endLayoutHold() { --layoutHolds_; }

    /** The lowest edge that the widgets need, their surround and the border included, in the panel's coordinates. */
    int contentBottom() const;

private:
    friend class LayoutHold;

    struct Placement {
        Glob* widget;
        WidgetPosition position;
        WidgetSurround surround;
        /** Where what stands below begins, and whether its gap counts: not below a start where nothing is shown. */
        int edge = 0;
        bool edgeIsReal = false;
    };

    void place(std::unique_ptr<Glob> widget, const WidgetPosition& position, const WidgetSurround& surround);
    void placeWidget(std::size_t index, const Kt::Box<int>& area);
    XY<int> resolve(const Placement& placement, const Placement* other, const Kt::Box<int>& area) const;
    void widgetsChanged();
    void endHoldAndLayOut();
    const Placement* findBefore(std::size_t index, const Glob* widget) const;

    Border border_;
    std::vector<Placement> placements_;
    int layoutHolds_ = 0;
    bool layoutPending_ = false; ///< something happened to the widgets during a hold
};

/**
 * Holds the layout of a panel off for the length of a scope, and lays it out once at the end: filling it takes the time
 * of what is added, not the square of it. Holds nest; the panel may go before the hold.
 */
class ORIBUND_API LayoutHold
{
public:
    explicit LayoutHold(StandardPanel& panel);
    ~LayoutHold();

    LayoutHold(const LayoutHold&) = delete;
    LayoutHold& operator=(const LayoutHold&) = delete;

private:
    GlobRef<StandardPanel> panel_;
};

} // namespace oribund
