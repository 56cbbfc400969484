#include "oribund/controls/rows/SwitchRow.h"

#include "oribund/controls/binding/EffectValParamAdaptor.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/widgets/ValCheckbox.h"

#include <algorithm>

namespace oribund
{

SwitchRow::SwitchRow(const FXViewHandle& handle, const EffectValParam<bool>& param, const ParamRowArgs& args)
    : KeyframeCtrlsBase(handle, param.id(), args.width, args.labelWidth, 0, args.canvas)
{
    ValCheckbox* const box = addEditor(std::make_unique<ValCheckbox>(Checkbox::InitArgs(0, 0, args.canvas)));
    box->setDataAdaptor(Kt::makePtr<BoolAdaptor>(handle, EffectValParamAccessor<bool>(param)));
    box_ = box;
    finishRow();
}

void SwitchRow::layoutEditors(const Kt::Box<int>& area)
{
    const int right = std::min(area.right, area.left + UifStd::getControlHeight());
    putInto(*box_, {area.left, area.top, right, area.bottom});
}

} // namespace oribund
