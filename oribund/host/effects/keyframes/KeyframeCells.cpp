#include "oribund/host/effects/keyframes/KeyframeCells.h"

#include "oribund/host/effects/keyframes/KeyframeSpan.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace oribund
{

KeyframeCells::KeyframeCells(double from, double to, int count)
    : from_(from)
    , low_(std::max(from, -kValueTolerance))
    , high_(std::min(to, 1.0 + kValueTolerance))
    , width_((to - from) / count)
    , cells_(static_cast<std::size_t>(count))
{
}

/** `anyFrom(from, enough)` is the time of the first keyframe that is not before `from`, or of any before `enough`. */
template <class AnyFrom>
void KeyframeCells::walk(AnyFrom anyFrom, bool selected)
{
    double next = low_;
    for (std::size_t cell = 0; cell < cells_.size(); ++cell) {
        const double time = anyFrom(next, from_ + static_cast<double>(cell + 1) * width_);
        if (time > high_)
            return;
        // Never back, even where rounding puts a keyframe and the end of its cell on the wrong sides of each other.
        cell = std::max(cell, static_cast<std::size_t>((time - from_) / width_));
        cell = std::min(cell, cells_.size() - 1);
        cells_[cell] = {time, true, selected};
        next = std::max(from_ + static_cast<double>(cell + 1) * width_, std::nextafter(time, high_ + 1.0));
    }
}

void KeyframeCells::add(const Graph1dBase& graph)
{
    walk([&graph](double from, double enough) { return graph.anyTimeFrom(from, enough); }, false);
}

void KeyframeCells::addSelected(std::span<const double> times)
{
    walk(
        [times](double from, double) {
            const auto found = std::lower_bound(times.begin(), times.end(), from);
            return found != times.end() ? *found : std::numeric_limits<double>::infinity();
        },
        true);
}

void KeyframeCells::visit(const std::function<void(double fxTime, bool selected)>& draw) const
{
    for (const Cell& cell : cells_) {
        if (cell.used)
            draw(cell.time, cell.selected);
    }
}

} // namespace oribund
