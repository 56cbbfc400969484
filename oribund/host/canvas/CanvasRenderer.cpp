#include "oribund/host/canvas/CanvasRenderer.h"

namespace oribund
{

CanvasRenderer::CanvasRenderer(const Kt::Box<double>& exposed)
    : clips_{exposed}
    , origins_{XY<double>()}
{
}

CanvasRenderer::~CanvasRenderer() = default;

void CanvasRenderer::pushClip(const Kt::Box<double>& box)
{
    clips_.push_back(clip().intersect(box.movedBy(origin())));
    clipPushed(box);
}

void CanvasRenderer::popClip()
{
    if (clips_.size() < 2)
        return;
    clips_.pop_back();
    clipPopped();
}

void CanvasRenderer::pushOrigin(const XY<double>& newOrigin)
{
    origins_.push_back(origin() + newOrigin);
    originPushed(newOrigin);
}

void CanvasRenderer::popOrigin()
{
    if (origins_.size() < 2)
        return;
    origins_.pop_back();
    originPopped();
}

void CanvasRenderer::fillColumns(const Kt::Box<double>& box, std::span<const Colour> columns)
{
    const double width = box.width() / static_cast<double>(columns.size());
    const auto edge = [&](std::size_t column) { return box.left + static_cast<double>(column) * width; };
    for (std::size_t i = 0, next = 0; i < columns.size(); i = next) {
        // Neighbours of one colour are one box.
        for (next = i + 1; next < columns.size() && columns[next] == columns[i]; ++next)
            ;
        fillRect({edge(i), box.top, next == columns.size() ? box.right : edge(next), box.bottom}, columns[i]);
    }
}

void CanvasRenderer::frameRect(const Kt::Box<double>& box, const Colour& colour, double width)
{
    const double w = std::min({width, box.width() / 2.0, box.height() / 2.0});
    if (w <= 0.0)
        return;
    fillRect({box.left, box.top, box.right, box.top + w}, colour);
    fillRect({box.left, box.bottom - w, box.right, box.bottom}, colour);
    // The upright edges leave out the corners: a translucent colour must not show there twice.
    fillRect({box.left, box.top + w, box.left + w, box.bottom - w}, colour);
    fillRect({box.right - w, box.top + w, box.right, box.bottom - w}, colour);
}

} // namespace oribund
