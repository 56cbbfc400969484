#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/Kt.h"
#include "oribund/host/base/iVirtual.h"

namespace oribund
{

/** Draws an effect's handles over the picture of a viewer. Made by an iEffectPanelBuilder and shared. */
class ORIBUND_API iVideoOverlayRenderer : public Kt::InternalRefCount, public iVirtual
{
};

} // namespace oribund
