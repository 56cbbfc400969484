#pragma once

#include "oribund/host/base/Export.h"

namespace oribund
{

/** The host's debug log. Any thread. */
class ORIBUND_API Log
{
public:
    virtual ~Log();

    /** Takes one text, which ends with its line feed. */
    virtual void write(const char* text) = 0;
};

/** Writes a printf-style line to the installed host's log, or to stderr while there is no host. */
[[gnu::format(printf, 1, 2)]] ORIBUND_API void logf(const char* format, ...);

} // namespace oribund
