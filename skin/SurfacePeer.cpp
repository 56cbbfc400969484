#include "skin/SurfacePeer.h"

#include "skin/GlobSurface.h"

#include "oribund/host/toolkit/core/Glob.h"

#include <QAccessible>

namespace workbench
{

namespace Change = oribund::PeerChange;

SurfacePeer::SurfacePeer(oribund::Glob& glob, QWidget& parent)
    : QtPeer(glob, new GlobSurface(glob, parent))
{
}

SurfacePeer::~SurfacePeer()
{
    if (auto* surface = static_cast<GlobSurface*>(widget()))
        surface->detach();
}

void SurfacePeer::refresh(unsigned changes)
{
    QtPeer::refresh(changes);
    if (widget() && (changes & (Change::kState | Change::kEnabled)) && QAccessible::isActive())
        tellAccessibility(changes);
}

void SurfacePeer::tellAccessibility(unsigned changes)
{
    auto* surface = static_cast<GlobSurface*>(widget());
    if (const auto number = surface->glob()->accessible().number; number && (changes & Change::kState)) {
        QAccessibleValueChangeEvent event(surface, number->value);
        QAccessible::updateAccessibility(&event);
        return;
    }
    QAccessible::State changed;
    changed.checked = changes & Change::kState ? 1 : 0;
    changed.disabled = changes & Change::kEnabled ? 1 : 0;
    QAccessibleStateChangeEvent event(surface, changed);
    QAccessible::updateAccessibility(&event);
}

} // namespace workbench
