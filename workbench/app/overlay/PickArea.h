#pragma once

#include "oribund/host/canvas/Image.h"
#include "oribund/host/toolkit/core/Control.h"
#include "workbench/app/overlay/PictureMapping.h"

#include <functional>
#include <optional>

namespace workbench
{

/**
 * Takes over the pointer in a viewer's picture while something is picked from it: a click picks a point, a drag an
 * area. With the keyboard the arrows move a cross, and Enter picks what is under it. Escape gives up a drag, or else
 * all.
 */
class PickArea final : public oribund::Control
{
public:
    explicit PickArea(const InitArgs& args);
    ~PickArea() override;

    /** Called with an area in parts of the frame, which is empty for a point, and the keys held. May do anything. */
    std::function<void(const oribund::Kt::Box<double>& area, unsigned modifiers)> picked;

    /** Called when the user wants no more. */
    std::function<void()> ended;

    /** Where the frame is seen, in coordinates of this. */
    void setMapping(const PictureMapping& mapping);

    /** Shown over the frame while the pointer is there, or the cross; an empty one lets the viewer's be seen. */
    void setPicture(const oribund::Image& picture);

    bool usesKey(const oribund::Event& press) const override;
    void describe(oribund::AccessibleDescription& description) const override;
    void draw(oribund::CanvasRenderer& renderer) override;

protected:
    bool handleMouseEvent(const oribund::Event& event) override;
    bool handleKeyEvent(const oribund::Event& event) override;

    void handleHidden() override { drag_.reset(); }

private:
    /** In coordinates of this. */
    struct Drag {
        oribund::XY<int> from;
        oribund::XY<int> to;
    };

    bool isArea() const;
    bool showsPicture() const;
    oribund::WString hint() const; ///< says at the top of the picture what is seen there
    void pickDragged(unsigned modifiers);
    void moveCross(const oribund::Event& press);
    oribund::Vector2d partsAt(const oribund::XY<int>& local) const;

    PictureMapping mapping_;
    oribund::Image picture_;
    std::optional<Drag> drag_;
    std::optional<oribund::Vector2d> cross_; ///< once the keyboard has moved it; in parts of the frame
};

} // namespace workbench
