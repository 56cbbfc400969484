#pragma once

#include "skin/QtPeer.h"

#include <memory>

namespace workbench
{

/** The peer of a glob that draws itself: all standard controls except text entries, and whatever panels add. */
class SurfacePeer final : public QtPeer
{
public:
    SurfacePeer(oribund::Glob& glob, QWidget& parent);
    ~SurfacePeer() override;

    void refresh(unsigned changes) override;

private:
    void tellAccessibility(unsigned changes);
};

} // namespace workbench
