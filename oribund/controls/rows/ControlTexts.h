#pragma once

#include "oribund/host/base/UIString.h"

namespace oribund
{

/** The texts of time bars and keyframe buttons, by the resource id with which a host's table may have its own. */
enum class ControlText : int {
    Keyframes = 20101,
    PreviousKeyframe = 20102,
    NextKeyframe = 20103,
    AddKeyframes = 20104,
    RemoveKeyframes = 20105,
    ZoomIn = 20106,
    ZoomOut = 20107,
    EffectTime = 20108,
    SelectAll = 20109,
    DeselectAll = 20110,
    RemoveSelected = 20111,
    AddStep = 20112,       ///< the title of an undo step
    RemoveStep = 20113,    ///< the title of an undo step
    KeyframeCount = 20114, ///< $NUMBER$, $COUNT$
    Selected = 20115,
    AndMore = 20116, ///< $COUNT$
    NotAnimated = 20117,
    NoKeyframeHere = 20118,
    KeyframeHere = 20119,
};

/** The host's text, or an English one where its table has none. */
UIString controlText(ControlText text);

} // namespace oribund
