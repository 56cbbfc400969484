#pragma once

namespace oribund
{

/** The shape of the pointer over a glob. The numbers are those of the host contract. */
enum class MouseCursor : int {
    Inherit = 0, ///< as over the parent
    ResizeHorizontal = 10,
    ResizeVertical = 11,
    Move = 12,
    Cross = 13,
    AddPoint = 14,
    Hand = 15, ///< a click does something
    Arrow = 16,
    Text = 20, ///< a click sets a caret
};

} // namespace oribund
