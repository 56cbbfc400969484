#pragma once

#include "oribund/host/base/Box.h"
#include "oribund/host/base/Colour.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/XY.h"
#include "oribund/host/canvas/FontDesc.h"

#include <span>
#include <vector>

namespace oribund
{

class Image;

/** Where a text stands in its box, across. */
enum class TextAlign { Left, Centre, Right };

/**
 * What everything is drawn with.
 *
 * Coordinates are logical pixels, top-down, from the origin pushed last; a pixel is the square from (x, y) to
 * (x + 1, y + 1), and a line one pixel wide is crisp when its ends lie at half pixels. Clips and origins nest, and a
 * clip is the common part of all that are pushed. A colour with alpha 0 draws nothing. User-interface thread only; a
 * renderer is valid during the draw call that it was passed to.
 */
class ORIBUND_API CanvasRenderer
{
public:
    virtual ~CanvasRenderer();

    /** All that can be seen of what is drawn now lies in this box, in the present coordinates; empty for nothing. */
    Kt::Box<double> clipBox() const { return clips_.back().movedBy(XY<double>() - origins_.back()); }

    virtual void fillRect(const Kt::Box<double>& box, const Colour& colour) = 0;

    /** Fills the box with upright strips of one width, a colour for each, from left to right. */
    virtual void fillColumns(const Kt::Box<double>& box, std::span<const Colour> columns);

    virtual void line(const XY<double>& from, const XY<double>& to, const Colour& colour, double width = 1.0) = 0;

    /** Joined lines through the points, not closed. */
    virtual void polyline(std::span<const XY<double>> points, const Colour& colour, double width = 1.0) = 0;

    /** A closed shape, filled by the even-odd rule and then outlined; the outline is centred on its edges. */
    virtual void polygon(std::span<const XY<double>> points, const Colour& fill, const Colour& outline = kNone,
                         double outlineWidth = 1.0) = 0;

    virtual void circle(const XY<double>& centre, double radius, const Colour& fill, const Colour& outline = kNone,
                        double outlineWidth = 1.0) = 0;

    /** One line of text, centred upright in the box and cut short with an ellipsis when it is too wide for it. */
    virtual void text(const Kt::Box<double>& box, const WString& text, const Glib::FontDesc& font, const Colour& colour,
                      TextAlign align = TextAlign::Left) = 0;

    /** The picture stretched to the box; `tint` colours an icon and is ignored for pixels. */
    virtual void image(const Kt::Box<double>& box, const Image& image, const Colour& tint) = 0;

    /** Pixels of the screen for each logical one, so that a picture can be made that fits them. */
    virtual double pixelRatio() const { return 1.0; }

    void pushClip(const Kt::Box<double>& box);
    void popClip();

    /** Makes `origin`, in the present coordinates, the new (0, 0). */
    void pushOrigin(const XY<double>& origin);
    void popOrigin();

    /** Clips and origins that are pushed and not popped; 0 between draw calls. */
    std::size_t depth() const { return clips_.size() + origins_.size() - 2; }

    /** The four edges of the box as lines that lie wholly inside it, each `width` thick. */
    void frameRect(const Kt::Box<double>& box, const Colour& colour, double width = 1.0);

    /** A box of whole pixels. */
    static constexpr Kt::Box<double> toDouble(const Kt::Box<int>& box)
    {
        return {static_cast<double>(box.left), static_cast<double>(box.top), static_cast<double>(box.right),
                static_cast<double>(box.bottom)};
    }

    /** Draws nothing. */
    static constexpr Colour kNone{0.0, 0.0, 0.0, 0.0};

protected:
    /** For a renderer that shows all that is drawn. */
    static constexpr Kt::Box<double> kEverything{-1e9, -1e9, 1e9, 1e9};

    /** `exposed` is what is to be drawn at most: what lies outside is left out. */
    explicit CanvasRenderer(const Kt::Box<double>& exposed = kEverything);

    /** In the coordinates of the origin pushed last, as what is drawn. */
    virtual void clipPushed(const Kt::Box<double>&) {}

    virtual void clipPopped() {}

    virtual void originPushed(const XY<double>&) {}

    virtual void originPopped() {}

    /** Where the origin pushed last lies, in the coordinates that held at first; and the clip, in the same. */
    const XY<double>& origin() const { return origins_.back(); }

    const Kt::Box<double>& clip() const { return clips_.back(); }

private:
    std::vector<Kt::Box<double>> clips_;
    std::vector<XY<double>> origins_;
};

/** Clips for the length of a scope. */
class ClipGuard
{
public:
    ClipGuard(CanvasRenderer& renderer, const Kt::Box<double>& box)
        : renderer_(renderer)
    {
        renderer_.pushClip(box);
    }

    ~ClipGuard() { renderer_.popClip(); }

    ClipGuard(const ClipGuard&) = delete;
    ClipGuard& operator=(const ClipGuard&) = delete;

private:
    CanvasRenderer& renderer_;
};

/** Moves the origin for the length of a scope. */
class OriginGuard
{
public:
    OriginGuard(CanvasRenderer& renderer, const XY<double>& origin)
        : renderer_(renderer)
    {
        renderer_.pushOrigin(origin);
    }

    ~OriginGuard() { renderer_.popOrigin(); }

    OriginGuard(const OriginGuard&) = delete;
    OriginGuard& operator=(const OriginGuard&) = delete;

private:
    CanvasRenderer& renderer_;
};

} // namespace oribund
