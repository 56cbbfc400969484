#include "oribund/controls/rows/InputSelector.h"

#include "oribund/controls/binding/EffectValParamAdaptor.h"

namespace oribund
{

InputSelector::InputSelector(const FXViewHandle& handle, const EffectValParam<VideoInputParam>& param,
                             const InitArgs& args)
    : ParamMenuButton(handle, param, args,
                      Kt::makePtr<VideoInputAdaptor>(handle, EffectValParamAccessor<VideoInputParam>(param)))
{
}

} // namespace oribund
