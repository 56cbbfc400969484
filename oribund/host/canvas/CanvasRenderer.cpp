#include "oribund/host/canvas/CanvasRenderer.h"

namespace oribund
{

CanvasRenderer::~CanvasRenderer() = default;

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
