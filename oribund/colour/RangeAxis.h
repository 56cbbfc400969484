#pragma once

#include "oribund/host/base/ColourData.h"
#include "oribund/host/base/Export.h"

#include <cstddef>

namespace oribund
{

/** What is taken hold of of a soft range: the components from `first` to `last`, which move together. */
struct RangePart {
    std::size_t first = 0;
    std::size_t last = 0;

    static constexpr RangePart handle(std::size_t component) { return {component, component}; }

    /** 0 for the lower soft edge, 2 for the upper one, 1 for the whole band with both. */
    static constexpr RangePart section(int section)
    {
        constexpr std::size_t kLast = 3;
        return {section == 2 ? std::size_t{2} : std::size_t{0}, section == 0 ? std::size_t{1} : kLast};
    }

    constexpr bool operator==(const RangePart&) const = default;
};

/**
 * The axis that soft ranges lie on, and how they can be changed there. A range has four components in ascending order:
 * where its lower soft edge starts, where the fully selected band starts and ends, and where the upper soft edge ends.
 *
 * On a circular axis they may lie anywhere, also beyond a whole turn, so that a range can straddle the start of the
 * circle; the range as a whole is no longer than the axis' span. A plain value.
 */
struct ORIBUND_API RangeAxis {
    /** What the whole width of a strip stands for. Above 0. */
    double span = 1.0;
    /** The length of a whole turn; 0 for an axis that is not circular and runs from 0 to `span`. */
    double period = 0.0;

    bool isCircular() const { return period > 0.0; }

    /** The range with its components in ascending order, on a circular axis by whole turns; else as it is. */
    ColourData ascending(ColourData range) const;

    /** The same place on a circular axis that is nearest to `near`; otherwise `value`. */
    double nearest(double value, double near) const;

    /** By whole turns, so that the middle of the range lies in the first one. */
    ColourData inFirstTurn(const ColourData& range) const;

    /** What of a range is seen: one longer than the span, about its middle. */
    ColourData shown(const ColourData& range) const;

    /** Where a component stands along the strip, 0 to 1. On a circular axis the range is in the middle. */
    double fractionOf(const ColourData& range, std::size_t component) const;

    /**
     * The range with a part of it moved by `delta`, as far as that goes: components keep their order, those that move
     * together keep their distances. What is out of bounds already stays, but can be moved no further out.
     */
    ColourData moved(const ColourData& range, RangePart part, double delta) const;
};

/** Whether all components are numbers that can be shown. */
ORIBUND_API bool isUsableRange(const ColourData& range);

} // namespace oribund
