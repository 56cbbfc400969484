#pragma once

#include "oribund/controls/rows/KeyframeCtrlsBase.h"
#include "oribund/controls/rows/ParamRow.h"
#include "oribund/host/effects/params/EffectValParam.h"

namespace oribund
{

/** The row of something that is on or off: a check box. */
class ORIBUND_API SwitchRow : public KeyframeCtrlsBase
{
public:
    SwitchRow(const FXViewHandle& handle, const EffectValParam<bool>& param, const ParamRowArgs& args);

protected:
    void layoutEditors(const Kt::Box<int>& area) override;

private:
    Glob* box_;
};

} // namespace oribund
