#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/Kt.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/XY.h"
#include "oribund/host/base/iVirtual.h"

namespace oribund
{

class Glob;
class StandardPanel;
struct WidgetPosition;

/** Supplies one video analysis view. Registered with FXPanelFactory, which does not own it. */
class ORIBUND_API iVideoAnalysisViewBuilder : public Kt::InternalRefCount, public iVirtual
{
public:
    /** A new view, which belongs to its parent; null when it cannot be made. */
    virtual StandardPanel* buildView(Glob* parent, const XY<int>& size, const WidgetPosition& position) = 0;

    /** The key by which the view is asked for. */
    virtual LightweightString<char> viewType() = 0;

    /** For the registrant's own use: this library does not call it. */
    virtual void configure() {}
};

} // namespace oribund
