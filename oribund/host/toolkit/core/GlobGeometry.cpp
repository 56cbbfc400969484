// Where a glob stands, how large it is, and what of it lies at a point.

#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/toolkit/core/Glob.h"
#include "oribund/host/toolkit/core/GlobChange.h"

#include <algorithm>
#include <cmath>

namespace oribund
{

namespace
{

/** Room for a hundred thousand rows. Pixels. */
constexpr int kLargestSize = (1 << 24) - 1;

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
    if (parent_)
        parent_->inRows_ = false;
    changed(GlobChange::kGeometry);
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
    if (parent_)
        parent_->inRows_ = false;
    changed(GlobChange::kGeometry | GlobChange::kContents);
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
    Glob* found = nullptr; // the last is on top
    for (std::size_t i = firstChildBelow(local.y); i < children_.size(); ++i) {
        Glob& child = *children_[i];
        if (rowsEndAbove(child, local.y + 1))
            break;
        if (Glob* inside = child.globAt(local - child.position_))
            found = inside;
    }
    return found ? found : this;
}

void Glob::noteRows()
{
    const auto isBelow = [](const std::unique_ptr<Glob>& one, const std::unique_ptr<Glob>& next) {
        return next->box().top < one->box().top || next->box().bottom < one->box().bottom;
    };
    inRows_ = std::adjacent_find(children_.begin(), children_.end(), isBelow) == children_.end();
}

/** The first child of which something may stand at or below `y`. */
std::size_t Glob::firstChildBelow(int y) const
{
    if (!inRows_)
        return 0;
    const auto endsAbove = [y](const std::unique_ptr<Glob>& child) { return child->box().bottom <= y; };
    return static_cast<std::size_t>(std::partition_point(children_.begin(), children_.end(), endsAbove) -
                                    children_.begin());
}

/** A part of it on the canvas, without what those around it do not let be seen. */
Kt::Box<int> Glob::seenOnCanvas(const Kt::Box<int>& part) const
{
    Kt::Box<int> seen = part.movedBy(position_);
    for (const Glob* glob = parent_; glob && !seen.empty(); glob = glob->parent_)
        seen = seen.intersect(glob->localBox()).movedBy(glob->position_);
    return seen;
}

void Glob::reveal(const Kt::Box<int>& part)
{
    if (parent_)
        parent_->reveal(part.movedBy(position_));
}

void Glob::invalidateBox()
{
    if (Canvas* where = canvas(); where && isShown())
        where->invalidate(seenOnCanvas(localBox()));
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
