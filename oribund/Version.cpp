#include "oribund/Version.h"

namespace oribund
{

const char* const oribundDllVersionStr = ORIBUND_VERSION;

} // namespace oribund
