#include "oribund/host/services/Log.h"

#include "oribund/host/services/Host.h"

#include <cstdarg>
#include <cstdio>

namespace oribund
{

Log::~Log() = default;

void logf(const char* format, ...)
{
    char line[1024];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(line, sizeof line, format, arguments);
    va_end(arguments);

    if (Host::isInstalled())
        Host::current().log().write(line);
    else
        std::fputs(line, stderr);
}

} // namespace oribund
