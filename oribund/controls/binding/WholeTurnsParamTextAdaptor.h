#pragma once

#include "oribund/controls/binding/DegreesParamAdaptor.h"

namespace oribund
{

/** The turns of WholeTurnsParamAdaptor as text. A text that is no whole number is refused. */
class ORIBUND_API WholeTurnsParamTextAdaptor final : public AngleTextAdaptor
{
public:
    WholeTurnsParamTextAdaptor(const FXViewHandle& handle, const EffectValParam<Angle>& param)
        : AngleTextAdaptor(handle, EffectValParamAccessor<Angle>(param))
    {
    }

    WString getDataValue() override;
    bool requestSetValue(const WString& text, ChangeKind kind) override;
};

} // namespace oribund
