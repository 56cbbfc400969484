#pragma once

#include "skin/Export.h"

#include "oribund/host/canvas/CanvasRenderer.h"

class QPainter;
class QRectF;

namespace oribund::qt
{

/**
 * Draws with a QPainter. Upright edges and lines are moved to the nearest device pixels, so that they are crisp at
 * every scale; all else is smoothed. The painter is not owned and is left as it was found; where it has a clip, what
 * lies outside that is left out.
 */
class ORIBUND_QT_API QPainterRenderer final : public oribund::CanvasRenderer
{
public:
    explicit QPainterRenderer(QPainter& painter);
    ~QPainterRenderer() override;

    void fillRect(const oribund::Kt::Box<double>& box, const oribund::Colour& colour) override;
    void line(const oribund::XY<double>& from, const oribund::XY<double>& to, const oribund::Colour& colour,
              double width) override;
    void polyline(std::span<const oribund::XY<double>> points, const oribund::Colour& colour, double width) override;
    void polygon(std::span<const oribund::XY<double>> points, const oribund::Colour& fill,
                 const oribund::Colour& outline, double outlineWidth) override;
    void circle(const oribund::XY<double>& centre, double radius, const oribund::Colour& fill,
                const oribund::Colour& outline, double outlineWidth) override;
    void text(const oribund::Kt::Box<double>& box, const oribund::WString& text, const oribund::Glib::FontDesc& font,
              const oribund::Colour& colour, oribund::TextAlign align) override;
    void image(const oribund::Kt::Box<double>& box, const oribund::Image& image, const oribund::Colour& tint) override;
    void fillColumns(const oribund::Kt::Box<double>& box, std::span<const oribund::Colour> columns) override;
    double pixelRatio() const override;

protected:
    void clipPushed(const oribund::Kt::Box<double>& box) override;
    void clipPopped() override;
    void originPushed(const oribund::XY<double>& origin) override;
    void originPopped() override;

private:
    QRectF snapped(const QRectF& rect) const;
    void setBrushAndPen(const oribund::Colour& fill, const oribund::Colour& outline, double width);

    QPainter& painter_;
};

} // namespace oribund::qt
