#pragma once

#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/Image.h"

#include <string>
#include <vector>

namespace oribund
{

/** One thing drawn, in canvas coordinates. Which fields mean something depends on the kind. */
struct Primitive {
    enum class Kind { Rect, Line, Polyline, Polygon, Circle, Text, Image };

    Kind kind = Kind::Rect;
    Kt::Box<double> box;                   ///< rectangles, texts, images; of a circle the box around it
    std::vector<XY<double>> points;        ///< lines and polygons
    Colour colour = CanvasRenderer::kNone; ///< the fill, or the colour of a line, a text, an icon
    Colour outline = CanvasRenderer::kNone;
    double width = 0.0; ///< of a line or outline
    WString text;
    Glib::FontDesc font;
    TextAlign align = TextAlign::Left;
    oribund::Image image;
    Kt::Box<double> clip; ///< what of it can be seen at most; everything when empty

    bool operator==(const Primitive&) const = default;
};

/** For example: Rect [0,0 10x4] #2a2a2a. */
ORIBUND_API std::string toString(const Primitive& primitive);
ORIBUND_API std::ostream& operator<<(std::ostream& stream, const Primitive& primitive);

/** Keeps a list of what is drawn instead of drawing it. What lies wholly outside the clip is left out. */
class ORIBUND_API RecordingRenderer final : public CanvasRenderer
{
public:
    RecordingRenderer() = default;

    /** Records what is seen in a part of a canvas. */
    explicit RecordingRenderer(const Kt::Box<double>& exposed)
        : CanvasRenderer(exposed)
    {
    }

    const std::vector<Primitive>& primitives() const { return primitives_; }

    void clear() { primitives_.clear(); }

    /** All of a kind, in drawing order. */
    std::vector<Primitive> ofKind(Primitive::Kind kind) const;

    /** The first text that reads so; null when it was not drawn. */
    const Primitive* findText(const WString& text) const;

    /** One line for each primitive. */
    std::string toString() const;

    void fillRect(const Kt::Box<double>& box, const Colour& colour) override;
    void line(const XY<double>& from, const XY<double>& to, const Colour& colour, double width) override;
    void polyline(std::span<const XY<double>> points, const Colour& colour, double width) override;
    void polygon(std::span<const XY<double>> points, const Colour& fill, const Colour& outline,
                 double outlineWidth) override;
    void circle(const XY<double>& centre, double radius, const Colour& fill, const Colour& outline,
                double outlineWidth) override;
    void text(const Kt::Box<double>& box, const WString& text, const Glib::FontDesc& font, const Colour& colour,
              TextAlign align) override;
    void image(const Kt::Box<double>& box, const Image& image, const Colour& tint) override;

private:
    std::vector<XY<double>> placed(std::span<const XY<double>> points) const;
    void add(Primitive primitive, const Kt::Box<double>& bounds);

    std::vector<Primitive> primitives_;
};

} // namespace oribund
