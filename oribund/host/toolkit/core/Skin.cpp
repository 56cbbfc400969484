#include "oribund/host/toolkit/core/Skin.h"

namespace oribund
{

Skin::~Skin() = default;

} // namespace oribund
