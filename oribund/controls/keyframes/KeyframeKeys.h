#pragma once

#include "oribund/host/base/Export.h"

namespace oribund
{

class Event;
class KeyframeCommands;

/**
 * The keys that mean the same wherever keyframes are shown: Ctrl+Left and Ctrl+Right walk them, Alt+Left and Alt+Right
 * move the selected ones by a frame, Delete removes them, Ctrl+A selects all, Escape none. Whether this was one of
 * them.
 */
ORIBUND_API bool runKeyframeKey(const KeyframeCommands& commands, const Event& event);

/** Whether runKeyframeKey() would do something with a press. */
ORIBUND_API bool usesKeyframeKey(const KeyframeCommands& commands, const Event& press);

} // namespace oribund
