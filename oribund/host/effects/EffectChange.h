#pragma once

#include "oribund/host/base/IdStamp.h"

namespace oribund
{

/** What has changed about an effect. The numbers are fixed: observers filter by them. */
enum class EffectChangeCode : int {
    None = 0,
    SelectionChanged = 1,    ///< keyframes were selected or deselected
    ParamSetChanged = 2,     ///< parameters were added, removed or replaced: bind again
    ParamValueChanged = 3,   ///< a constant, or the value of a keyframe
    KeyframesMoved = 4,      ///< keyframes have other times
    PresentationChanged = 5, ///< groups, titles, order of display
    KeyframesChanged = 6,    ///< keyframes were added or removed
    CurrentTimeMoved = 7,    ///< nothing of the effect itself: what shows a value at the current time reads again
    FunctionTypeChanged = 8, ///< a parameter became animated or constant
    CurveShapeChanged = 9,   ///< types or tangents of keyframes
    ParamSetRestored = 10,   ///< undo or redo replaced parameters: bind again
    EnabledChanged = 11,     ///< the effect was switched on or off
    EditabilityChanged = 12, ///< which parameters can be edited now
};

/** Tells the observers of a host's effects what has changed. */
struct EffectChangeDescription {
    /** Bits of `flags`. */
    static constexpr unsigned kWholesaleRefresh = 2; ///< re-read everything, whatever `code` says
    static constexpr unsigned kSelectionOnly = 4;    ///< no value has changed, only what is selected
    static constexpr unsigned kTimeOnly = 8;         ///< no value has changed, only the current time
    static constexpr unsigned kToldByParams = 16;    ///< who shows a parameter concerned has heard it from that already

    unsigned flags = 0;
    EffectChangeCode code = EffectChangeCode::None;
    IdStamp effect; ///< IdStamp::wildcard() for all effects
    IdStamp param;  ///< invalid or IdStamp::wildcard() when it concerns all parameters of the effect
};

} // namespace oribund
