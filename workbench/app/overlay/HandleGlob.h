#pragma once

#include "oribund/host/edit/monitor/FXViewHandle.h"
#include "oribund/host/toolkit/core/Control.h"
#include "workbench/app/overlay/EffectHandles.h"
#include "workbench/app/overlay/HandleDrag.h"

namespace workbench
{

/**
 * One handle: it is dragged, or moved by the arrow keys. With Shift a drag keeps to one axis, with Ctrl it goes a tenth
 * as far; a key goes ten times as far with Shift, and a tenth with Ctrl. A double click brings back the default.
 */
class HandleGlob final : public oribund::Control
{
public:
    HandleGlob(const InitArgs& args, const oribund::FXViewHandle& view, const PictureHandle& handle);
    ~HandleGlob() override;

    const PictureHandle& handle() const { return handle_; }

    /** Takes the place that the handle has now; outside `view` it stands at its border. */
    void place(const PictureHandle& handle, const PictureMapping& mapping, const oribund::Kt::Box<int>& view);

    bool isDragging() const { return edits_.isBegun(); }

    bool usesKey(const oribund::Event& press) const override;
    void describe(oribund::AccessibleDescription& description) const override;
    bool accessibleSetNumber(double value, int part = kWhole) override;
    oribund::UIString tooltip() const override;
    oribund::MouseCursor contextCursor(const oribund::XY<int>& local) const override;
    void draw(oribund::CanvasRenderer& renderer) override;

protected:
    bool handleMouseEvent(const oribund::Event& event) override;
    bool handleKeyEvent(const oribund::Event& event) override;

private:
    oribund::WString valueText() const;
    void drag(const oribund::Event& event);
    void step(const oribund::Event& press);

    PictureHandle handle_;
    PictureMapping mapping_;
    oribund::XY<double> centre_; ///< in its own coordinates: it need not lie on a whole pixel
    oribund::FXViewHandle view_;
    HandleDrag edits_;
    bool pressed_ = false;
    oribund::XY<int> pressedAt_; ///< of the canvas
};

} // namespace workbench
