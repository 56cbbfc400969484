#pragma once

#include "oribund/controls/binding/EffectValParamAdaptor.h"

namespace oribund
{

/** Binds a colour swatch: all that is tried out while its chooser is open is one series of edits. */
class ORIBUND_API SwatchAdaptor final : public ColourAdaptor
{
public:
    SwatchAdaptor(const FXViewHandle& handle, const EffectValParam<ColourData>& param)
        : ColourAdaptor(handle, EffectValParamAccessor<ColourData>(param))
    {
        setInChangeSeries(true);
    }
};

} // namespace oribund
