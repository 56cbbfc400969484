#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/Kt.h"
#include "oribund/host/base/LightweightString.h"

namespace oribund
{

class EffectInstance;
class Menu;
class Vob;

/** The menu of an effect's panel: what the host offers to do with the whole effect. User-interface thread only. */
class ORIBUND_API EffectMenuItems
{
public:
    /** Messages of items that the panel itself answers. */
    static constexpr const char* kRename = "RenameComponent";
    static constexpr const char* kRemove = "RemoveComponent";

    /**
     * Adds the items for an effect. What the host does not offer is missing, what cannot be done now is disabled: on a
     * read-only edit all that would change it.
     */
    static void getItemsForComponent(Menu& menu, Vob& vob, const Kt::Ptr<EffectInstance>& effect);

    /** Does what the item of that message stands for, as one undo step. False for the panel's own, and any other. */
    static bool perform(const String& message, Vob& vob, const Kt::Ptr<EffectInstance>& effect);
};

} // namespace oribund
