#pragma once

#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/iVirtual.h"

namespace oribund
{

/** What has a type of its own, known by a text that stays the same from session to session. */
class Taggable : public iVirtual
{
public:
    virtual String tagTypeId() const = 0;
};

} // namespace oribund
