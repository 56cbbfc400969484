#include "oribund/host/toolkit/Skin.h"

#include "oribund/host/toolkit/GlobPeer.h"

namespace oribund
{

GlobPeer::~GlobPeer() = default;

Skin::~Skin() = default;

} // namespace oribund
