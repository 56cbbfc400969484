#include "skin/QPainterRenderer.h"

#include "skin/QtConversions.h"
#include "skin/theme/Glyphs.h"

#include "oribund/host/canvas/Image.h"

#include <QCache>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QPolygonF>

#include <algorithm>
#include <cmath>

namespace oribund::qt
{

using oribund::Colour;
using oribund::XY;
using Box = oribund::Kt::Box<double>;

namespace
{

QPolygonF toPolygon(std::span<const XY<double>> points)
{
    QPolygonF polygon;
    polygon.reserve(static_cast<qsizetype>(points.size()));
    for (const auto& p : points)
        polygon.append(toQt(p));
    return polygon;
}

QPen penOf(const Colour& colour, double width)
{
    if (colour.a <= 0.0)
        return Qt::NoPen;
    return QPen(toQt(colour), width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
}

/** What of the free room stands before the text. */
double shareBefore(oribund::TextAlign align)
{
    switch (align) {
    case oribund::TextAlign::Centre:
        return 0.5;
    case oribund::TextAlign::Right:
        return 1.0;
    case oribund::TextAlign::Left:
        break;
    }
    return 0.0;
}

/** A picture as the painter draws it without converting it first, and what it was made from: that keeps its address. */
struct Picture {
    oribund::Image source;
    QImage drawn;
};

/** Pictures are drawn again and again: the last of them are kept. */
QImage pictureOf(const oribund::Image& image)
{
    constexpr int kMostKilobytes = 32 * 1024;
    static QCache<const void*, Picture> pictures(kMostKilobytes);
    if (const Picture* known = pictures.object(image.pixels()))
        return known->drawn;
    const QImage plain(reinterpret_cast<const uchar*>(image.pixels()->data()), image.size().x, image.size().y,
                       QImage::Format_ARGB32);
    QImage drawn = plain.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const auto kilobytes = static_cast<int>(drawn.sizeInBytes() / 512) + 1; // of source and picture
    pictures.insert(image.pixels(), new Picture{image, drawn}, kilobytes);
    return drawn;
}

} // namespace

QPainterRenderer::QPainterRenderer(QPainter& painter)
    // What is moved to whole device pixels may come in from just outside.
    : CanvasRenderer(painter.hasClipping() ? fromQt(painter.clipBoundingRect()).inset(-1.0) : kEverything)
    , painter_(painter)
{
    painter_.save();
    painter_.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
}

QPainterRenderer::~QPainterRenderer()
{
    painter_.restore();
}

QRectF QPainterRenderer::snapped(const QRectF& rect) const
{
    // The device transform includes the pixel ratio of the window or picture.
    const QTransform transform = painter_.deviceTransform();
    if (transform.type() > QTransform::TxScale)
        return rect;
    const QRectF device = transform.mapRect(rect);
    const double left = std::round(device.left());
    const double top = std::round(device.top());
    const auto end = [](double start, double stop, double length) {
        // What is there at all is at least one pixel wide.
        return length > 0.0 ? std::max(std::round(stop), start + 1.0) : start;
    };
    const QRectF whole(QPointF(left, top),
                       QPointF(end(left, device.right(), device.width()), end(top, device.bottom(), device.height())));
    return transform.inverted().mapRect(whole);
}

void QPainterRenderer::fillRect(const Box& box, const Colour& colour)
{
    if (colour.a <= 0.0 || box.empty())
        return;
    // Smoothing would turn the last bit of a rounded coordinate into a grey edge.
    painter_.setRenderHint(QPainter::Antialiasing, false);
    painter_.fillRect(snapped(toQt(box)), toQt(colour));
    painter_.setRenderHint(QPainter::Antialiasing);
}

void QPainterRenderer::fillColumns(const Box& box, std::span<const Colour> columns)
{
    if (box.empty() || columns.empty())
        return;
    const bool isOpaque = std::all_of(columns.begin(), columns.end(), [](const Colour& c) { return c.a >= 1.0; });
    QImage row(static_cast<int>(columns.size()), 1, isOpaque ? QImage::Format_RGB32 : QImage::Format_ARGB32);
    auto* pixels = reinterpret_cast<QRgb*>(row.scanLine(0));
    std::transform(columns.begin(), columns.end(), pixels, [isOpaque](const Colour& colour) {
        return isOpaque ? 0xff000000U | colour.toRGB() : toQt(colour).rgba();
    });
    painter_.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform, false);
    painter_.drawImage(snapped(toQt(box)), isOpaque ? row : row.convertToFormat(QImage::Format_ARGB32_Premultiplied));
    painter_.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
}

double QPainterRenderer::pixelRatio() const
{
    return std::hypot(painter_.deviceTransform().m11(), painter_.deviceTransform().m12());
}

void QPainterRenderer::line(const XY<double>& from, const XY<double>& to, const Colour& colour, double width)
{
    if (colour.a <= 0.0)
        return;
    const double half = width / 2.0;
    if (from.x == to.x || from.y == to.y) {
        const bool upright = from.x == to.x;
        const QRectF area = QRectF(toQt(from), toQt(to)).normalized();
        fillRect({area.left() - (upright ? half : 0.0), area.top() - (upright ? 0.0 : half),
                  area.right() + (upright ? half : 0.0), area.bottom() + (upright ? 0.0 : half)},
                 colour);
        return;
    }
    painter_.setPen(penOf(colour, width));
    painter_.drawLine(toQt(from), toQt(to));
}

void QPainterRenderer::polyline(std::span<const XY<double>> points, const Colour& colour, double width)
{
    if (colour.a <= 0.0 || points.size() < 2)
        return;
    QPen pen = penOf(colour, width);
    pen.setJoinStyle(Qt::RoundJoin);
    pen.setCapStyle(Qt::RoundCap);
    painter_.setPen(pen);
    painter_.setBrush(Qt::NoBrush);
    painter_.drawPolyline(toPolygon(points));
}

void QPainterRenderer::setBrushAndPen(const Colour& fill, const Colour& outline, double width)
{
    painter_.setBrush(fill.a > 0.0 ? QBrush(toQt(fill)) : QBrush(Qt::NoBrush));
    painter_.setPen(penOf(outline, width));
}

void QPainterRenderer::polygon(std::span<const XY<double>> points, const Colour& fill, const Colour& outline,
                               double outlineWidth)
{
    if (points.size() < 3)
        return;
    setBrushAndPen(fill, outline, outlineWidth);
    painter_.drawPolygon(toPolygon(points), Qt::OddEvenFill);
}

void QPainterRenderer::circle(const XY<double>& centre, double radius, const Colour& fill, const Colour& outline,
                              double outlineWidth)
{
    setBrushAndPen(fill, outline, outlineWidth);
    painter_.drawEllipse(toQt(centre), radius, radius);
}

void QPainterRenderer::text(const Box& box, const oribund::WString& text, const oribund::Glib::FontDesc& font,
                            const Colour& colour, oribund::TextAlign align)
{
    if (colour.a <= 0.0 || text.empty())
        return;
    const QFont qtFont = toQt(font);
    const QFontMetricsF metrics(qtFont);
    QString shown = toQt(text);
    QRectF area = toQt(box);
    if (metrics.horizontalAdvance(shown) > area.width() + 0.01)
        shown = metrics.elidedText(shown, Qt::ElideRight, area.width());
    // A baseline and a first letter on a whole pixel keep small letters sharp, and where a native editor shows them.
    const double width = std::ceil(metrics.horizontalAdvance(shown));
    const double left = std::floor((area.width() - width) * shareBefore(align));
    const double top = std::floor(area.top() + (area.height() - metrics.height()) / 2.0 + 0.5);
    area = QRectF(area.left() + std::max(left, 0.0), top, area.width(), metrics.height());
    painter_.setFont(qtFont);
    painter_.setPen(toQt(colour));
    painter_.drawText(area, static_cast<int>(Qt::AlignLeft | Qt::AlignTop) | Qt::TextSingleLine | Qt::TextDontClip,
                      shown);
}

void QPainterRenderer::image(const Box& box, const oribund::Image& image, const Colour& tint)
{
    if (image.pixels()) {
        painter_.drawImage(snapped(toQt(box)), pictureOf(image));
    } else if (const auto glyph = glyphNamed(toQt(image.iconName()))) {
        paintGlyph(painter_, *glyph, toQt(box), toQt(tint));
    }
}

void QPainterRenderer::clipPushed(const Box& box)
{
    painter_.save();
    painter_.setClipRect(snapped(toQt(box)), Qt::IntersectClip);
}

void QPainterRenderer::clipPopped()
{
    painter_.restore();
}

void QPainterRenderer::originPushed(const XY<double>& origin)
{
    painter_.save();
    painter_.translate(toQt(origin));
}

void QPainterRenderer::originPopped()
{
    painter_.restore();
}

} // namespace oribund::qt
