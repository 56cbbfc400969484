// Where a glob stands, how large it is, and what of it lies at a point.

#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/toolkit/core/Glob.h"
#include "oribund/host/toolkit/core/GlobPeer.h"

#include <algorithm>
#include <cmath>

namespace oribund
{

namespace
{

constexpr int kLargestSize = 65535;

int toPixels(double length)
{
    return std::isfinite(length) ? static_cast<int>(std::lround(std::clamp(length, 0.0, double(kLargestSize)))) : 0;
}

} // namespace

void Glob::setPosition(const XY<int>& position)
{
    if (position == position_)
        return;
    invalidateBox();
    position_ = position;
    changed(PeerChange::kGeometry);
}

void Glob::resize(double width, double height)
{
    const XY<int> old = size_;
    if (applySize(width, height))
        tellParentOfResize(old);
}

bool Glob::applySize(double width, double height)
{
    const XY<int> taken{std::max(toPixels(width), minSize_.x), std::max(toPixels(height), minSize_.y)};
    if (taken == size_)
        return false;
    invalidateBox();
    size_ = taken;
    changed(PeerChange::kGeometry | PeerChange::kContents);
    return true;
}

void Glob::tellParentOfResize(const XY<int>& oldSize)
{
    if (parent_)
        parent_->handleChildResize(this, oldSize);
}

XY<int> Glob::toCanvas(const XY<int>& local) const
{
    XY<int> p = local;
    for (const Glob* glob = this; glob; glob = glob->parent_)
        p += glob->position_;
    return p;
}

XY<int> Glob::fromCanvas(const XY<int>& onCanvas) const
{
    return onCanvas - toCanvas({});
}

bool Glob::hitTest(const XY<int>& local) const
{
    return localBox().contains(local);
}

Glob* Glob::globAt(const XY<int>& local)
{
    if (!isVisible() || !hitTest(local))
        return nullptr;
    for (auto child = children_.rbegin(); child != children_.rend(); ++child) {
        if (Glob* found = (*child)->globAt(local - (*child)->position_))
            return found;
    }
    return this;
}

void Glob::invalidateBox()
{
    if (Canvas* where = canvas(); where && isShown())
        where->invalidate(Kt::Box<int>::fromSize(toCanvas({}), size_));
}

MouseCursor Glob::cursorAt(const XY<int>& local) const
{
    XY<int> p = local;
    for (const Glob* glob = this; glob; p += glob->position_, glob = glob->parent_) {
        if (const MouseCursor cursor = glob->contextCursor(p); cursor != MouseCursor::Inherit)
            return cursor;
    }
    return MouseCursor::Arrow;
}

} // namespace oribund
