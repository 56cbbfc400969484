#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/notify/MethodCallback.h"
#include "oribund/host/toolkit/core/Glob.h"
#include "oribund/host/toolkit/scroll/ScrollBar.h"

#include <memory>

namespace oribund
{

/**
 * Shows a part of something higher than itself, and scrolls it up and down. What it shows has its width, less that of
 * the scroll bar where there is one, and a height of its own.
 *
 * It scrolls by the bar, by the wheel and by Page Up, Page Down, Home and End where what has the keyboard has no use
 * for them; and by itself, so that what gets the keyboard is in view. Scrolling costs what comes into view, however
 * high the whole is.
 */
class ORIBUND_API ScrollPanel : public Glob
{
public:
    explicit ScrollPanel(const GlobCreationInfo& info);

    /** Shows something else, from its top, and destroys what was shown before. Null for nothing. */
    void setContent(std::unique_ptr<Glob> content);

    Glob* getContent() const { return content_; }

    /** How many pixels of the content are out of view above. */
    int getScroll() const;

    int getMaxScroll() const;

    /** Clamped; false when that is where it is. */
    bool setScroll(int offset);

    const ScrollBar& scrollBar() const { return *bar_; }

    using Glob::resize;
    void resize(double width, double height) override;
    void reveal(const Kt::Box<int>& part) override;
    bool usesKey(const Event& press) const override;
    void describe(AccessibleDescription& description) const override;
    void draw(CanvasRenderer& renderer) override;

protected:
    bool handleMouseEvent(const Event& event) override;
    bool handleKeyEvent(const Event& event) override;
    void handleChildResize(const Glob* child, const XY<int>& oldSize) override;
    void handleChildrenChanged(Glob* child) override;
    void handleChildRemoved(const Glob* child) override;

private:
    int handleBar(const ScrollBarEvent& event);
    bool overflows(bool besideBar);
    void layOut();
    void showThumb();
    int contentHeight() const;

    Glob* content_ = nullptr;
    bool layingOut_ = false;
    ScrollBar* bar_;
    double wheelRest_ = 0.0;
    MethodCallback<ScrollPanel, ScrollBarEvent> barCallback_{this, &ScrollPanel::handleBar};
};

} // namespace oribund
