#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/FXTime.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/UIString.h"
#include "oribund/host/base/iVirtual.h"

namespace oribund
{

class EffectInstance;

/**
 * What a host does to the effects of one viewed edit, beyond the values of their parameters. A host derives from it
 * what it offers, and gives it to the panels by Vob::fxEditor(); what it leaves out is missing from their menus. Each
 * operation is one undo step, and is told of as any edit is. An effect may be one that is embedded in another, or a
 * mask. User-interface thread only.
 */
class ORIBUND_API FXEditor : public iVirtual
{
public:
    /** How an operation ended. */
    enum class RC : int {
        Done = 0,
        NotOffered = 1, ///< by this host
        Refused = 2,    ///< nothing was changed; the host has told the user why
        Pending = 3,    ///< it goes on, and ends later
    };

    /** What can be done with an effect. */
    enum class Command { Rename, Reset, KeyframeAll, CopySettings, PasteSettings, MoveUp, MoveDown };

    /** Whether it can be done. Whether the edit is read-only plays no part. */
    enum class Offer {
        No,     ///< never with this effect
        NotNow, ///< because of the state that the edit is in, or the effect
        Yes
    };

    /** What an effect is in the graph of the edit. */
    enum class Node { None, Effect, VideoTransition };

    FXEditor();
    ~FXEditor() override;

    virtual Offer offers(Command command, const EffectInstance& effect) const;

    /** An empty name gives the effect back the name that it had first. */
    virtual RC rename(const EffectInstance& effect, const WString& name);

    /** Gives all parameters their defaults; animated ones become constant. */
    virtual RC reset(const EffectInstance& effect);

    /** A keyframe at that time in every parameter that can have one; the values stay. */
    virtual RC keyframeAll(const EffectInstance& effect, FXTime time);

    /** Keeps the values and keyframes of an effect for pasteSettings(). */
    virtual RC copySettings(const EffectInstance& effect);

    /** Sets the parameters that are of the same name and type as those that were copied. */
    virtual RC pasteSettings(const EffectInstance& effect);

    /** Moves the effect that many places up (negative) or down among those of its segment. */
    virtual RC move(const EffectInstance& effect, int by);

    /** Whether the effect can have a mask. If not, `reason` says why, and is empty where no mask is offered at all. */
    virtual bool isMaskable(const EffectInstance& effect, UIString& reason) const;

    /** Adds a mask with default values, or removes it with all that is keyed in it. */
    virtual RC setMask(const EffectInstance& effect, bool present);

    /** None for an effect that the edit does not hold, and for one that cannot be removed. */
    virtual Node findNode(const EffectInstance& effect) const;

    /** Removes an effect from what it is on, with its mask and all that is keyed in it. */
    virtual RC destroyNode(const EffectInstance& effect);

    FXEditor(const FXEditor&) = delete;
    FXEditor& operator=(const FXEditor&) = delete;
};

} // namespace oribund
