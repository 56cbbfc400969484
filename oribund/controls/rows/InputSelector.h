#pragma once

#include "oribund/controls/rows/ParamMenuButton.h"
#include "oribund/host/effects/params/EffectValParam.h"

namespace oribund
{

/**
 * The row of an effect's video input: its name, and a menu of the inputs that the host gives in the parameter's value.
 * When the host gives others, as tracks come and go, the menu follows.
 */
class ORIBUND_API InputSelector : public ParamMenuButton
{
public:
    InputSelector(const FXViewHandle& handle, const EffectValParam<VideoInputParam>& param, const InitArgs& args);
};

} // namespace oribund
