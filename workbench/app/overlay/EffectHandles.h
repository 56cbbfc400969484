#pragma once

#include "oribund/host/base/IdStamp.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/Vector2d.h"
#include "oribund/host/effects/params/ParamValue.h"
#include "workbench/app/overlay/PictureMapping.h"

#include <optional>
#include <vector>

namespace oribund
{
class EffectInstance;
}

namespace workbench
{

/** Something in the picture that is dragged to set one parameter of an effect or of its mask. */
struct PictureHandle {
    enum class Kind { Place, Left, Right, Top, Bottom, Angle, Softness };

    Kind kind = Kind::Place;
    oribund::IdStamp effect; ///< that has the parameter: the effect shown, or its mask
    oribund::IdStamp param;
    oribund::Vector2d at;  ///< in parts of the frame
    oribund::WString name; ///< such as "Mask: Width"

    bool isSame(const PictureHandle& other) const
    {
        return kind == other.kind && effect == other.effect && param == other.param;
    }
};

/** What an effect has to show in the picture. */
struct EffectHandles {
    struct Outline {
        std::vector<oribund::Vector2d> points; ///< in parts of the frame, closed
        bool faint = false;

        bool operator==(const Outline&) const = default;
    };

    std::vector<Outline> outlines;
    std::vector<PictureHandle> handles; ///< the later ones lie above the earlier
};

/** The handles of an effect and of its mask, with the values at an effect time. None for one without places. */
EffectHandles handlesOf(const oribund::EffectInstance& effect, double fxTime, const PictureMapping& mapping);

/**
 * The value with which a handle of `effect`, which has its parameter, would be at a place in parts of the frame, or as
 * near to it as it can get. Nothing when it has no such parameter any more.
 */
std::optional<oribund::ParamValue> valueAt(const PictureHandle& handle, const oribund::EffectInstance& effect,
                                           double fxTime, const oribund::Vector2d& place,
                                           const PictureMapping& mapping);

/** What an arrow key adds to the value of the handle's parameter: in units of a row, for a place along each axis. */
oribund::Vector2d stepOf(const oribund::EffectInstance& effect, const PictureHandle& handle);

} // namespace workbench
