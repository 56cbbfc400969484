#pragma once

namespace oribund
{

/** The frame of a panel: how far its user area lies inside its edges, and what is drawn there. Logical pixels. */
struct Border {
    enum Type : unsigned { None = 0, Line = 1 };

    /** Bits of `sides`. */
    static constexpr unsigned kLeft = 1;
    static constexpr unsigned kTop = 2;
    static constexpr unsigned kRight = 4;
    static constexpr unsigned kBottom = 8;
    static constexpr unsigned kAllSides = 15;

    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    unsigned type = None;
    unsigned sides = kAllSides;

    constexpr Border() = default;

    /** Insets of `size` at each of the sides; the insets may be set one by one afterwards. */
    constexpr Border(unsigned borderType, int size, unsigned whichSides = kAllSides)
        : left(whichSides & kLeft ? size : 0)
        , top(whichSides & kTop ? size : 0)
        , right(whichSides & kRight ? size : 0)
        , bottom(whichSides & kBottom ? size : 0)
        , type(borderType)
        , sides(whichSides)
    {
    }

    constexpr bool isVisible() const { return type != None && sides != 0; }

    constexpr bool operator==(const Border&) const = default;
};

} // namespace oribund
