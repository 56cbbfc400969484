#pragma once

#include "oribund/controls/rows/KeyframeCtrlsBase.h"
#include "oribund/controls/rows/ParamRow.h"
#include "oribund/host/toolkit/values/ValAdaptorBase.h"

namespace oribund
{

class ValMenuButton;

/** The row of a choice between items: a button that drops down a menu of them. */
class ORIBUND_API ChoiceRow : public KeyframeCtrlsBase
{
public:
    /** The parameter is a list or a video input; the adaptor is one for its index. */
    ChoiceRow(const FXViewHandle& handle, const EffectValParamBase& param, const ParamRowArgs& args,
              const Kt::Ptr<ValAdaptorBase<unsigned>>& adaptor);

protected:
    void layoutEditors(const Kt::Box<int>& area) override;
    void handleParamReplaced(EffectValParamBase& param) override;

private:
    ValMenuButton* menu_;
};

} // namespace oribund
