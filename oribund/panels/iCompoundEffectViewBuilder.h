#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/Kt.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/UIString.h"
#include "oribund/host/base/XY.h"
#include "oribund/host/base/iVirtual.h"
#include "oribund/host/canvas/FontDesc.h"

namespace oribund
{

class Glob;
class IdStamp;
class Vob;
struct WidgetPosition;
struct WidgetSurround;

/**
 * Supplies one view ("params", "keyframes", "browser", ...) of the compound effect panel. Registered with
 * FXPanelFactory, which does not own it. User-interface thread only.
 */
class ORIBUND_API iCompoundEffectViewBuilder : public Kt::InternalRefCount, public iVirtual
{
public:
    /** How the view's tab looks. */
    struct TabLabel {
        UIString title;
        Glib::FontDesc font;
    };

    /** A new view, which belongs to its parent; null when it cannot be made. `caps` is the panel's capability mask. */
    virtual Glob* buildView(Glob* parent, Vob* vob, unsigned int caps, const IdStamp& effect, const XY<int>& size,
                            const WidgetPosition& position, const WidgetSurround& surround) = 0;

    /** The key by which the view is asked for. */
    virtual LightweightString<char> viewType() = 0;

    /** For the registrant's own use: this library does not call it. */
    virtual void configure() {}

    virtual TabLabel tabLabel() = 0;
    virtual UIString tabTooltip() = 0;

    /** A panel offers the view only when its own capability mask shares a bit with this. */
    virtual unsigned int caps() = 0;
};

} // namespace oribund
