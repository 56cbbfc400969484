#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/toolkit/layout/WidgetGroupEx.h"

#include <optional>

namespace oribund
{

template <class Widget>
class KeyTable;

/**
 * A group that can be folded to its title row: by a click on the row, or from the keyboard with Space or Enter, Left
 * (fold) and Right (unfold). The parent hears of it through handleChildResize().
 */
class ORIBUND_API MinimizableGroup : public WidgetGroupEx
{
public:
    struct InitArgs : WidgetGroupEx::InitArgs {
        using WidgetGroupEx::InitArgs::InitArgs;
        /** Whether there is anything to click: an arrow in the title row. */
        bool minimisable = true;
        eSizeState sizeState = eSizeNormal;
        /** Of the title; the palette's heading text where there is none. */
        std::optional<Colour> titleColour;
    };

    explicit MinimizableGroup(const InitArgs& args);

    eSizeState getSizeState() const { return sizeState_; }

    void setSizeState(eSizeState state);

    bool isMinimisable() const { return minimisable_; }

    /** Whether the user may fold and unfold it now; only of effect in a minimisable group. */
    void setSizeChangeEnabled(bool enabled);

    bool isSizeChangeEnabled() const { return sizeChangeEnabled_; }

    /** The user folds or unfolds the group; nothing happens while that is not allowed. */
    void userToggleSizeState();

    int calcHeight() const override;
    bool wantsFocus() const override;
    bool usesKey(const Event& press) const override;
    void describe(AccessibleDescription& description) const override;
    bool accessibleActivate(int part = kWhole) override;
    void draw(CanvasRenderer& renderer) override;

protected:
    /** The user has folded or unfolded it. May destroy the group. */
    virtual void handleSizeToggle() {}

    bool handleMouseEvent(const Event& event) override;
    bool handleKeyEvent(const Event& event) override;
    void handleChildrenChanged(Glob* child) override;
    int titleTextOffset() const override;

private:
    static const KeyTable<MinimizableGroup>& keys();
    bool canToggle() const;
    void keepFocus();
    void foldChild(Glob& child);
    void drawArrow(CanvasRenderer& renderer);

    eSizeState sizeState_;
    bool minimisable_;
    bool sizeChangeEnabled_ = true;
    bool pressed_ = false;
};

} // namespace oribund
