#pragma once

#include "oribund/controls/bars/FXThermBase.h"

namespace oribund
{

/** The time bar above the controls of a track's effects. */
class ORIBUND_API CompoundEffectTherm final : public FXThermBase
{
public:
    /** Names the bar for tests and skins, unless it was given another name. */
    static const String identity;

    explicit CompoundEffectTherm(const InitArgs& args);
};

} // namespace oribund
