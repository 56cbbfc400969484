#pragma once

#include "oribund/controls/rows/KeyframeCtrlsBase.h"
#include "oribund/host/toolkit/values/ValAdaptorBase.h"
#include "workbench/app/panel/ParamRow.h"

namespace oribund
{
class ValMenuButton;
}

namespace workbench
{

/** The row of a choice between items: a button that drops down a menu of them. */
class ChoiceRow : public oribund::KeyframeCtrlsBase
{
public:
    /** The parameter is a list or a video input; the adaptor is one for its index. */
    ChoiceRow(const oribund::FXViewHandle& handle, const oribund::EffectValParamBase& param, const ParamRowArgs& args,
              const oribund::Kt::Ptr<oribund::ValAdaptorBase<unsigned>>& adaptor);

protected:
    void layoutEditors(const oribund::Kt::Box<int>& area) override;
    void handleParamReplaced(oribund::EffectValParamBase& param) override;

private:
    oribund::ValMenuButton* menu_;
};

} // namespace workbench
