#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/LightweightString.h"

namespace oribund
{

class EffectValParamBase;
class Glob;
struct WidgetSurround;

/** Which control shows a parameter: what its type and its display flags decide. */
enum class ParamControl {
    Number,
    Angle,
    Colour,
    OpaqueColour, ///< one without an opacity to choose
    ColourRange,
    ColourOffset,
    TonalRanges,
    Point,
    Switch,
    NumberChoice,
    TextChoice,
    VideoInput,
};

/** What a control is made for: one that is made for the same can go on showing a parameter. */
struct ParamShape {
    ParamControl control = ParamControl::Number;
    int followers = 0; ///< how many parameters after its own it shows as well: a colour range is up to three
    int index = 0;     ///< of the first in the effect's list; counts for colour ranges alone, which are bound by it

    bool operator==(const ParamShape&) const = default;
};

// What FXPanelGenerator does with controls, whichever they are. User-interface thread only.

ORIBUND_API ParamControl paramControlOf(const EffectValParamBase& param);

/** The space around a control of a group, such that the names of all controls begin at the same x. */
WidgetSurround surroundOf(ParamControl control);

/** Gives the name in a control so much room; where there is no column of names nothing happens. */
void setNameWidth(Glob& control, int width);

/** Brings in step what a control does not follow by itself when its parameter is replaced: name and tooltip. */
void refreshName(Glob& control, const EffectValParamBase& param, const WString& name);

} // namespace oribund
