#include "oribund/host/canvas/DirtyRegion.h"

#include <cstddef>
#include <cstdint>

namespace oribund
{

namespace
{

constexpr std::size_t kMostBoxes = 8;

std::int64_t areaOf(const Kt::Box<int>& box)
{
    return std::int64_t{box.width()} * box.height();
}

/** How much is drawn in vain when two boxes become one. */
std::int64_t waste(const Kt::Box<int>& one, const Kt::Box<int>& other)
{
    return areaOf(one.unite(other)) - areaOf(one) - areaOf(other);
}

} // namespace

void DirtyRegion::add(const Kt::Box<int>& box)
{
    if (box.empty())
        return;
    Kt::Box<int> added = box;
    for (;;) {
        // The neighbour with which it makes the best one box: at no cost, or because there are too many.
        std::size_t best = boxes_.size();
        for (std::size_t i = 0; i < boxes_.size(); ++i) {
            if (best == boxes_.size() || waste(boxes_[i], added) < waste(boxes_[best], added))
                best = i;
        }
        if (best == boxes_.size() || (waste(boxes_[best], added) > 0 && boxes_.size() < kMostBoxes))
            break;
        if (boxes_[best].contains(added))
            return;
        added = added.unite(boxes_[best]);
        boxes_.erase(boxes_.begin() + static_cast<std::ptrdiff_t>(best));
    }
    boxes_.push_back(added);
}

Kt::Box<int> DirtyRegion::bounds() const
{
    Kt::Box<int> all;
    for (const Kt::Box<int>& box : boxes_)
        all = all.unite(box);
    return all;
}

} // namespace oribund
