#include "oribund/host/toolkit/core/Skin.h"

#include "oribund/host/toolkit/core/GlobPeer.h"

namespace oribund
{

GlobPeer::~GlobPeer() = default;

Skin::~Skin() = default;

} // namespace oribund
