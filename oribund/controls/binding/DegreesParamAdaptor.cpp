#include "oribund/controls/binding/DegreesParamAdaptor.h"

namespace oribund
{

template class DegreesParamAdaptorBase<double>;
template class DegreesParamAdaptorBase<WString>;
template class DegreesParamAdaptor<double>;
template class DegreesParamAdaptor<WString>;
template class RawDegreesParamAdaptor<WString>;

} // namespace oribund
