#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/Kt.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/iVirtual.h"

namespace oribund
{

class EffectComponentPanel;
class EffectInstance;
class FXPanelCreationOptions;
class Vob;
class iVideoOverlayRenderer;

/**
 * Makes the user interface of those effects that it claims. Modules that know effects derive from it and register one
 * with FXPanelFactory. User-interface thread only.
 */
class ORIBUND_API iEffectPanelBuilder : public Kt::InternalRefCount, public iVirtual
{
public:
    /** What a builder is asked for. */
    enum Kind : int { kComponentPanel = 0, kOverlayRenderer = 1 };

    /** Whether this builder serves effects of that type tag, for that Kind. */
    virtual bool canBuild(int kind, const LightweightString<char>& tag) = 0;

    /** A new panel, which belongs to the caller; null when it cannot be made. */
    virtual EffectComponentPanel* buildComponentPanel(const FXPanelCreationOptions& options) = 0;

    /** What draws the effect's handles over the picture; empty when it cannot be made. */
    virtual Kt::Ptr<iVideoOverlayRenderer> buildOverlayRenderer(Vob* vob, const Kt::Ptr<EffectInstance>& effect) = 0;
};

} // namespace oribund
