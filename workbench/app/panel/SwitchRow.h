#pragma once

#include "oribund/controls/rows/KeyframeCtrlsBase.h"
#include "oribund/host/effects/params/EffectValParam.h"
#include "workbench/app/panel/ParamRow.h"

namespace workbench
{

/** The row of something that is on or off: a check box. */
class SwitchRow : public oribund::KeyframeCtrlsBase
{
public:
    SwitchRow(const oribund::FXViewHandle& handle, const oribund::EffectValParam<bool>& param,
              const ParamRowArgs& args);

protected:
    void layoutEditors(const oribund::Kt::Box<int>& area) override;

private:
    oribund::Glob* box_;
};

} // namespace workbench
