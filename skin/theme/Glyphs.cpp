#include "skin/theme/Glyphs.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>

#include <algorithm>
#include <array>
#include <cmath>

namespace oribund::qt
{

namespace
{

constexpr double kGrid = 16.0;
constexpr double kStrokeWidth = 1.5;

/**
 * A shape is filled, stroked, or both. Paths are commands and coordinates: M and L with x y, C with two handles and an
 * end, Z to close, O with centre and radius of a circle, A with centre, radius, start and sweep in degrees,
 * anticlockwise from the right.
 */
struct Shape {
    const char* name;
    const char* filled;
    const char* stroked;
};

constexpr std::array<Shape, static_cast<std::size_t>(Glyph::Count)> kShapes{{
    {"play", "M 4 2.5 L 13.5 8 L 4 13.5 Z", ""},
    {"pause", "M 3.5 2.5 L 6.5 2.5 L 6.5 13.5 L 3.5 13.5 Z M 9.5 2.5 L 12.5 2.5 L 12.5 13.5 L 9.5 13.5 Z", ""},
    {"step-back", "M 9.5 3 L 9.5 13 L 2 8 Z M 11 3 L 13 3 L 13 13 L 11 13 Z", ""},
    {"step-forward", "M 6.5 3 L 14 8 L 6.5 13 Z M 3 3 L 5 3 L 5 13 L 3 13 Z", ""},
    {"to-start", "M 2 3 L 4 3 L 4 13 L 2 13 Z M 9 3 L 9 13 L 4 8 Z M 14 3 L 14 13 L 9 8 Z", ""},
    {"to-end", "M 12 3 L 14 3 L 14 13 L 12 13 Z M 7 3 L 12 8 L 7 13 Z M 2 3 L 7 8 L 2 13 Z", ""},
    {"previous-cut", "M 8.5 4 L 8.5 12 L 3 8 Z", "M 11.5 2.5 L 11.5 13.5"},
    {"next-cut", "M 7.5 4 L 13 8 L 7.5 12 Z", "M 4.5 2.5 L 4.5 13.5"},
    {"loop", "M 10 0.8 L 13.8 3.5 L 10 6.2 Z M 6 9.8 L 2.2 12.5 L 6 15.2 Z",
     "M 10.5 3.5 L 5.5 3.5 C 3.5 3.5 2.5 5 2.5 7 L 2.5 8 M 5.5 12.5 L 10.5 12.5 C 12.5 12.5 13.5 11 13.5 9 L 13.5 8"},
    {"undo", "M 6.2 1.5 L 6.2 8.5 L 1.5 5 Z",
     "M 5.5 5 L 9.5 5 C 12.2 5 13.8 6.8 13.8 9.2 C 13.8 11.6 12.2 13.3 9.5 13.3 "
     "L 5 13.3"},
    {"redo", "M 9.8 1.5 L 9.8 8.5 L 14.5 5 Z",
     "M 10.5 5 L 6.5 5 C 3.8 5 2.2 6.8 2.2 9.2 C 2.2 11.6 3.8 13.3 6.5 13.3 "
     "L 11 13.3"},
    {"keyframe-off", "", "M 8 3 L 13 8 L 8 13 L 3 8 Z"},
    {"keyframe-away", "M 8 5.8 L 10.2 8 L 8 10.2 L 5.8 8 Z", "M 8 3 L 13 8 L 8 13 L 3 8 Z"},
    {"keyframe-here", "M 8 2 L 14 8 L 8 14 L 2 8 Z", ""},
    {"previous-keyframe", "M 10.5 3.5 L 10.5 12.5 L 4.5 8 Z", ""},
    {"next-keyframe", "M 5.5 3.5 L 11.5 8 L 5.5 12.5 Z", ""},
    {"keyframe-add", "", "M 6.5 4.5 L 11 9 L 6.5 13.5 L 2 9 Z M 12.5 1.5 L 12.5 6.5 M 10 4 L 15 4"},
    {"keyframe-remove", "", "M 6.5 4.5 L 11 9 L 6.5 13.5 L 2 9 Z M 10 4 L 15 4"},
    {"zmin", "", "O 6.8 6.8 4.8 M 10.3 10.3 L 14.2 14.2 M 6.8 4.6 L 6.8 9 M 4.6 6.8 L 9 6.8"},
    {"zmout", "", "O 6.8 6.8 4.8 M 10.3 10.3 L 14.2 14.2 M 4.6 6.8 L 9 6.8"},
    {"expand", "", "M 6 3.5 L 10.5 8 L 6 12.5"},
    {"collapse", "", "M 3.5 6 L 8 10.5 L 12.5 6"},
    {"up", "", "M 3.5 10 L 8 5.5 L 12.5 10"},
    {"down", "", "M 3.5 6 L 8 10.5 L 12.5 6"},
    {"trash", "",
     "M 2.5 4 L 13.5 4 M 6 3.5 L 6 2 L 10 2 L 10 3.5 M 4 4.5 L 4.8 14 L 11.2 14 L 12 4.5 "
     "M 6.6 7 L 6.8 11.5 M 9.4 7 L 9.2 11.5"},
    {"power", "", "M 8 1.8 L 8 7.5 A 8 8.8 5 50 -280"},
    {"plus", "", "M 8 3 L 8 13 M 3 8 L 13 8"},
    {"minus", "", "M 3 8 L 13 8"},
    {"close", "", "M 4 4 L 12 12 M 12 4 L 4 12"},
    {"check", "", "M 3 8.5 L 6.5 12 L 13 4.5"},
    {"search", "", "O 6.8 6.8 4.3 M 10 10 L 14 14"},
    {"settings",
     "M 11 2.2 L 13 2.2 L 13 6.2 L 11 6.2 Z M 4 6 L 6 6 L 6 10 L 4 10 Z M 8.5 9.8 L 10.5 9.8 L 10.5 13.8 L 8.5 "
     "13.8 Z",
     "M 2 4.2 L 14 4.2 M 2 8 L 14 8 M 2 11.8 L 14 11.8"},
    {"more", "O 3.5 8 1.4 O 8 8 1.4 O 12.5 8 1.4", ""},
    {"reset", "M 2 1.8 L 7.4 4.9 L 2 8 Z", "A 8.5 8.8 4.8 140 -290"},
    {"open", "", "M 1.8 12.8 L 1.8 3.2 L 6 3.2 L 7.6 5 L 13 5 L 13 7.2 M 1.8 12.8 L 4.4 7.2 L 14.8 7.2 L 12.4 12.8 Z"},
    {"save", "",
     "M 2.5 2.5 L 11 2.5 L 13.5 5 L 13.5 13.5 L 2.5 13.5 Z M 5 2.8 L 5 6 L 10 6 L 10 2.8 "
     "M 4.8 13.2 L 4.8 9 L 11.2 9 L 11.2 13.2"},
    {"export", "M 4.5 5.5 L 8 1.2 L 11.5 5.5 Z",
     "M 8 4.5 L 8 10 M 5 7.5 L 2.5 7.5 L 2.5 14 L 13.5 14 L 13.5 7.5 L 11 7.5"},
    {"split", "", "M 8 1.5 L 8 14.5 M 5 4 L 1.8 4 L 1.8 12 L 5 12 M 11 4 L 14.2 4 L 14.2 12 L 11 12"},
    {"volume", "M 2 5.8 L 4.5 5.8 L 8 2.5 L 8 13.5 L 4.5 10.2 L 2 10.2 Z", "A 8 8 3 50 -100 A 8 8 5.8 50 -100"},
    {"mute", "M 2 5.8 L 4.5 5.8 L 8 2.5 L 8 13.5 L 4.5 10.2 L 2 10.2 Z", "M 10 6 L 14 10 M 14 6 L 10 10"},
    {"warning", "O 8 11.8 0.95", "M 8 2 L 14.5 13.8 L 1.5 13.8 Z M 8 6 L 8 9.6"},
    {"eye-dropper", "M 8.4 4.2 L 9.6 3 L 10.5 3.9 L 12 2.3 C 13 1.2 14.8 3 13.7 4 L 12.1 5.5 L 13 6.4 L 11.8 7.6 Z",
     "M 9.6 5.4 L 3.6 11.4 L 2.6 13.4 L 4.6 12.4 L 10.6 6.4"},
    {"film", "",
     "M 1.8 3 L 14.2 3 L 14.2 13 L 1.8 13 Z M 4.8 3 L 4.8 13 M 11.2 3 L 11.2 13 M 1.8 8 L 4.8 8 "
     "M 11.2 8 L 14.2 8"},
}};

/** Reads the path of a shape; the table above is the only source of them. */
class PathReader
{
public:
    explicit PathReader(const char* text)
        : rest_(QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts))
    {
    }

    QPainterPath read()
    {
        QPainterPath path;
        while (next_ < rest_.size())
            readCommand(path);
        return path;
    }

private:
    double number() { return rest_.at(next_++).toDouble(); }

    QPointF point()
    {
        const double x = number();
        return {x, number()};
    }

    void readCommand(QPainterPath& path)
    {
        const char command = rest_.at(next_++).at(0).toLatin1();
        if (command == 'Z') {
            path.closeSubpath();
            return;
        }
        const QPointF at = point();
        if (command == 'M') {
            path.moveTo(at);
        } else if (command == 'L') {
            path.lineTo(at);
        } else if (command == 'C') {
            const QPointF second = point();
            path.cubicTo(at, second, point());
        } else if (command == 'O') {
            const double radius = number();
            path.addEllipse(at, radius, radius);
        } else if (command == 'A') {
            const double radius = number();
            const double start = number();
            const QRectF box(at.x() - radius, at.y() - radius, 2 * radius, 2 * radius);
            path.arcMoveTo(box, start);
            path.arcTo(box, start, number());
        }
    }

    QStringList rest_;
    qsizetype next_ = 0;
};

struct Paths {
    QPainterPath filled;
    QPainterPath stroked;
};

const Paths& pathsOf(Glyph glyph)
{
    static const auto all = [] {
        std::array<Paths, kShapes.size()> paths;
        std::transform(kShapes.begin(), kShapes.end(), paths.begin(), [](const Shape& shape) {
            return Paths{PathReader(shape.filled).read(), PathReader(shape.stroked).read()};
        });
        return paths;
    }();
    return all[static_cast<std::size_t>(glyph)];
}

class GlyphIconEngine final : public QIconEngine
{
public:
    explicit GlyphIconEngine(Glyph glyph)
        : glyph_(glyph)
    {
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        paintGlyph(*painter, glyph_, rect, QGuiApplication::palette().color(group, QPalette::ButtonText));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return new GlyphIconEngine(glyph_); }

private:
    Glyph glyph_;
};

} // namespace

std::optional<Glyph> glyphNamed(QStringView name)
{
    const auto it = std::find_if(kShapes.begin(), kShapes.end(),
                                 [&](const Shape& shape) { return name == QLatin1String(shape.name); });
    if (it == kShapes.end())
        return std::nullopt;
    return static_cast<Glyph>(it - kShapes.begin());
}

const char* glyphName(Glyph glyph)
{
    return kShapes[static_cast<std::size_t>(glyph)].name;
}

void paintGlyph(QPainter& painter, Glyph glyph, const QRectF& box, const QColor& colour)
{
    const double side = std::min(box.width(), box.height());
    if (side <= 0.0 || glyph == Glyph::Count)
        return;
    const Paths& paths = pathsOf(glyph);
    const double scale = side / kGrid;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(std::round(box.center().x() - side / 2.0), std::round(box.center().y() - side / 2.0));
    painter.scale(scale, scale);
    painter.fillPath(paths.filled, colour);
    // A line keeps at least its width in pixels when the glyph is small.
    const double width = std::max(kStrokeWidth, 1.2 / scale);
    painter.strokePath(paths.stroked, QPen(colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.restore();
}

QIcon glyphIcon(Glyph glyph)
{
    return QIcon(new GlyphIconEngine(glyph));
}

} // namespace oribund::qt
