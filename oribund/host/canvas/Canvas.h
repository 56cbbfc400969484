#pragma once

#include "oribund/host/base/Box.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/base/XY.h"
#include "oribund/host/canvas/DirtyRegion.h"

#include <memory>

namespace oribund
{

class CanvasClient;
class CanvasRenderer;
class Event;
class Glob;
class Skin;
class TextMeasurer;

/**
 * The surface on which panels are opened: a window's contents, or nothing but memory when it has no skin.
 *
 * It belongs to the host and must outlive the globs that are made for it. User-interface thread only.
 */
class ORIBUND_API Canvas
{
public:
    /** `size` in logical pixels; `skin`, which is not owned, is null for a canvas without a screen. */
    explicit Canvas(const XY<int>& size, Skin* skin = nullptr);
    ~Canvas();

    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    const XY<int>& size() const { return size_; }

    void setSize(const XY<int>& size) { size_ = size; }

    Kt::Box<int> box() const { return Kt::Box<int>::fromSize({}, size_); }

    /** Device pixels for each logical one. */
    double scale() const { return scale_; }

    void setScale(double scale) { scale_ = scale > 0.0 ? scale : 1.0; }

    Skin* skin() const { return skin_; }

    const TextMeasurer& textMeasurer() const;

    /**
     * Gives an event, in canvas coordinates, to the glob that it is for: mouse events to the one under the pointer or
     * to the one that holds the pointer since a press, keys to the focus owner; Tab moves the focus.
     * True when a glob took it.
     */
    bool inject(const Event& event);

    /** Draws everything that is open on the canvas, and forgets what was out of date. */
    void draw(CanvasRenderer& renderer);

    Glob* focusOwner() const;

    /** What has to be drawn again since the last draw(); empty when nothing has. */
    const DirtyRegion& dirtyRegion() const { return dirty_; }

    /** Marks a region as out of date, within the canvas. */
    void invalidate(const Kt::Box<int>& region);

    /** How often a glob on this canvas has had to be repainted. */
    unsigned repaintCount() const { return repaints_; }

    /** Called by a glob for each of its repaints, with its box. */
    void repainted(const Kt::Box<int>& region);

    CanvasClient* client() const { return client_.get(); }

    void setClient(std::unique_ptr<CanvasClient> client);

private:
    XY<int> size_;
    double scale_ = 1.0;
    Skin* skin_ = nullptr;
    DirtyRegion dirty_;
    unsigned repaints_ = 0;
    std::unique_ptr<CanvasClient> client_;
};

} // namespace oribund
