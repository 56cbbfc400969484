#pragma once

namespace oribund
{

/** Whether what changes is repainted at once, or left to a repaint that is coming anyway. */
enum class eRedrawFlag { No = 0, Yes = 1 };

} // namespace oribund
