#pragma once

#include "oribund/host/base/Export.h"
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

    FXEditor();
    ~FXEditor() override;

    /** Whether effects can have names of their own. */
    virtual bool canRename(const EffectInstance& effect) const;
    /** An empty name gives the effect back the name that it had first. */
    virtual RC rename(const EffectInstance& effect, const WString& name);

    /** Whether the effect can have a mask. If not, `reason` says why, and is empty where no mask is offered at all. */
    virtual bool isMaskable(const EffectInstance& effect, UIString& reason) const;
    /** Adds a mask with default values, or removes it with all that is keyed in it. */
    virtual RC setMask(const EffectInstance& effect, bool present);

    /** Whether the effect can go that many places up (negative) or down among those of its segment. */
    virtual bool canMove(const EffectInstance& effect, int by) const;
    virtual RC move(const EffectInstance& effect, int by);

    /** Keeps the values and keyframes of an effect for pasteSettings(). */
    virtual RC copySettings(const EffectInstance& effect);
    /** Whether something was copied that the effect can take. */
    virtual bool canPasteSettings(const EffectInstance& effect) const;
    /** Sets the parameters that are of the same name and type as those that were copied. */
    virtual RC pasteSettings(const EffectInstance& effect);

    FXEditor(const FXEditor&) = delete;
    FXEditor& operator=(const FXEditor&) = delete;
};

} // namespace oribund
