#include "oribund/host/canvas/Canvas.h"

#include "oribund/host/canvas/CanvasClient.h"
#include "oribund/host/canvas/UifStd.h"

namespace oribund
{

CanvasClient::~CanvasClient() = default;

Canvas::Canvas(const XY<int>& size, Skin* skin)
    : size_(size)
    , skin_(skin)
{
}

Canvas::~Canvas() = default;

const TextMeasurer& Canvas::textMeasurer() const
{
    return UifStd::instance().textMeasurer();
}

bool Canvas::inject(const Event& event)
{
    return client_ && client_->handleEvent(event);
}

void Canvas::draw(CanvasRenderer& renderer)
{
    dirty_.clear();
    if (client_)
        client_->drawContents(renderer);
}

Glob* Canvas::focusOwner() const
{
    return client_ ? client_->focusOwner() : nullptr;
}

void Canvas::invalidate(const Kt::Box<int>& region)
{
    const Kt::Box<int> inside = region.intersect(box());
    dirty_.add(inside);
    if (client_ && !inside.empty())
        client_->regionChanged(inside);
}

void Canvas::repainted(const Kt::Box<int>& region)
{
    ++repaints_;
    invalidate(region);
}

void Canvas::setClient(std::unique_ptr<CanvasClient> client)
{
    client_ = std::move(client);
}

} // namespace oribund
