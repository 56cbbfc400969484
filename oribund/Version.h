#pragma once

#include "oribund/host/base/Export.h"

namespace oribund
{

/**
 * The version of the library that is loaded, as text ("1.4.2"). It has C linkage, so that a program which opens the
 * library by hand can ask for it by name before it touches anything else.
 */
extern "C" ORIBUND_API const char* const oribundDllVersionStr;

} // namespace oribund
