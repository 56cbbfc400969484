#include "oribund/host/canvas/RecordingRenderer.h"

#include <algorithm>
#include <cstdio>
#include <ostream>

namespace oribund
{

namespace
{

Kt::Box<double> boundsOf(std::span<const XY<double>> points, double margin)
{
    if (points.empty())
        return {};
    Kt::Box<double> b{points[0].x, points[0].y, points[0].x, points[0].y};
    for (const auto& p : points) {
        b = {std::min(b.left, p.x), std::min(b.top, p.y), std::max(b.right, p.x), std::max(b.bottom, p.y)};
    }
    return b.inset(-margin);
}

bool isSeen(const Colour& colour)
{
    return colour.a > 0.0;
}

std::string number(double v)
{
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.6g", v == 0.0 ? 0.0 : v); // no "-0"
    return buffer;
}

std::string describe(const XY<double>& p)
{
    return number(p.x).append(",").append(number(p.y));
}

std::string describe(const Kt::Box<double>& b)
{
    std::string s = "[";
    return s.append(describe(b.topLeft()))
               .append(" ")
               .append(number(b.width()))
               .append("x")
               .append(number(b.height())) +
           "]";
}

std::string describe(const Colour& c)
{
    char buffer[48];
    if (c.a >= 1.0)
        std::snprintf(buffer, sizeof buffer, "#%06x", static_cast<unsigned>(c.toRGB()));
    else
        std::snprintf(buffer, sizeof buffer, "#%06x/%s", static_cast<unsigned>(c.toRGB()), number(c.a).c_str());
    return buffer;
}

const char* nameOf(Primitive::Kind kind)
{
    static constexpr const char* kNames[] = {"Rect", "Line", "Polyline", "Polygon", "Circle", "Text", "Image"};
    return kNames[static_cast<std::size_t>(kind)];
}

void describeText(std::string& s, const Primitive& p)
{
    static constexpr const char* kAligns[] = {"left", "centre", "right"};
    s.append(" \"").append(toUTF8(p.text).view()).append("\" ");
    if (!p.font.family.empty())
        s.append(p.font.family.view()).append(" ");
    s.append(std::to_string(p.font.size)).append(p.font.bold ? " bold " : " ");
    s.append(p.font.italic ? "italic " : "").append(kAligns[static_cast<std::size_t>(p.align)]);
}

void describeImage(std::string& s, const Primitive& p)
{
    if (p.image.pixels())
        s.append(" pixels");
    else
        s.append(" icon ").append(p.image.iconName().view());
}

} // namespace

std::string toString(const Primitive& p)
{
    std::string s = nameOf(p.kind);
    if (p.points.empty())
        s.append(" ").append(describe(p.box));
    for (const auto& point : p.points)
        s.append(" ").append(describe(point));
    if (p.kind == Primitive::Kind::Text)
        describeText(s, p);
    if (p.kind == Primitive::Kind::Image)
        describeImage(s, p);
    if (isSeen(p.colour))
        s.append(" ").append(describe(p.colour));
    if (isSeen(p.outline))
        s.append(" outline ").append(describe(p.outline));
    if (p.width > 0.0)
        s.append(" width ").append(number(p.width));
    if (!p.clip.empty())
        s.append(" clip ").append(describe(p.clip));
    return s;
}

std::ostream& operator<<(std::ostream& stream, const Primitive& primitive)
{
    return stream << toString(primitive);
}

std::vector<Primitive> RecordingRenderer::ofKind(Primitive::Kind kind) const
{
    std::vector<Primitive> found;
    std::copy_if(primitives_.begin(), primitives_.end(), std::back_inserter(found),
                 [kind](const Primitive& p) { return p.kind == kind; });
    return found;
}

const Primitive* RecordingRenderer::findText(const WString& text) const
{
    const auto found = std::find_if(primitives_.begin(), primitives_.end(), [&](const Primitive& p) {
        return p.kind == Primitive::Kind::Text && p.text == text;
    });
    return found == primitives_.end() ? nullptr : &*found;
}

std::string RecordingRenderer::toString() const
{
    std::string lines;
    for (const auto& p : primitives_)
        lines += oribund::toString(p) + "\n";
    return lines;
}

std::vector<XY<double>> RecordingRenderer::placed(std::span<const XY<double>> points) const
{
    std::vector<XY<double>> moved(points.begin(), points.end());
    for (auto& p : moved)
        p += origin();
    return moved;
}

void RecordingRenderer::add(Primitive primitive, const Kt::Box<double>& bounds)
{
    if (!clip().intersects(bounds))
        return;
    if (!clip().contains(bounds))
        primitive.clip = clip();
    primitives_.push_back(std::move(primitive));
}

void RecordingRenderer::fillRect(const Kt::Box<double>& box, const Colour& colour)
{
    if (!isSeen(colour) || box.empty())
        return;
    Primitive p;
    p.kind = Primitive::Kind::Rect;
    p.box = box.movedBy(origin());
    p.colour = colour;
    const auto bounds = p.box;
    add(std::move(p), bounds);
}

void RecordingRenderer::line(const XY<double>& from, const XY<double>& to, const Colour& colour, double width)
{
    const XY<double> ends[] = {from, to};
    if (!isSeen(colour) || width <= 0.0)
        return;
    Primitive p;
    p.kind = Primitive::Kind::Line;
    p.points = placed(ends);
    p.colour = colour;
    p.width = width;
    const auto bounds = boundsOf(p.points, width / 2.0);
    add(std::move(p), bounds);
}

void RecordingRenderer::polyline(std::span<const XY<double>> points, const Colour& colour, double width)
{
    if (!isSeen(colour) || width <= 0.0 || points.size() < 2)
        return;
    Primitive p;
    p.kind = Primitive::Kind::Polyline;
    p.points = placed(points);
    p.colour = colour;
    p.width = width;
    const auto bounds = boundsOf(p.points, width / 2.0);
    add(std::move(p), bounds);
}

void RecordingRenderer::polygon(std::span<const XY<double>> points, const Colour& fill, const Colour& outline,
                                double outlineWidth)
{
    if ((!isSeen(fill) && !isSeen(outline)) || points.size() < 3)
        return;
    Primitive p;
    p.kind = Primitive::Kind::Polygon;
    p.points = placed(points);
    p.colour = fill;
    p.outline = outline;
    p.width = isSeen(outline) ? outlineWidth : 0.0;
    const auto bounds = boundsOf(p.points, p.width / 2.0);
    add(std::move(p), bounds);
}

void RecordingRenderer::circle(const XY<double>& centre, double radius, const Colour& fill, const Colour& outline,
                               double outlineWidth)
{
    if ((!isSeen(fill) && !isSeen(outline)) || radius <= 0.0)
        return;
    Primitive p;
    p.kind = Primitive::Kind::Circle;
    const XY<double> c = centre + origin();
    p.box = {c.x - radius, c.y - radius, c.x + radius, c.y + radius};
    p.colour = fill;
    p.outline = outline;
    p.width = isSeen(outline) ? outlineWidth : 0.0;
    const auto bounds = p.box.inset(-p.width / 2.0);
    add(std::move(p), bounds);
}

void RecordingRenderer::text(const Kt::Box<double>& box, const WString& text, const Glib::FontDesc& font,
                             const Colour& colour, TextAlign align)
{
    if (!isSeen(colour) || box.empty() || text.empty())
        return;
    Primitive p;
    p.kind = Primitive::Kind::Text;
    p.box = box.movedBy(origin());
    p.text = text;
    p.font = font;
    p.colour = colour;
    p.align = align;
    const auto bounds = p.box;
    add(std::move(p), bounds);
}

void RecordingRenderer::image(const Kt::Box<double>& box, const Image& image, const Colour& tint)
{
    if (box.empty() || image.empty())
        return;
    Primitive p;
    p.kind = Primitive::Kind::Image;
    p.box = box.movedBy(origin());
    p.image = image;
    p.colour = image.pixels() ? kNone : tint;
    const auto bounds = p.box;
    add(std::move(p), bounds);
}

} // namespace oribund
