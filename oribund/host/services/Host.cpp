#include "oribund/host/services/Host.h"

#include "oribund/host/notify/NotifierBase.h"
#include "oribund/host/services/Log.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>

namespace oribund
{

namespace
{
// Atomic because any thread may log.
std::atomic<Host*> installedHost{nullptr};
} // namespace

Host::~Host() = default;

Host* Host::install(Host* host)
{
    NotifierBase::setExceptionReport([](const char* line) { logf("%s\n", line); });
    return installedHost.exchange(host);
}

bool Host::isInstalled()
{
    return installedHost.load() != nullptr;
}

Host& Host::current()
{
    Host* const host = installedHost.load();
    if (!host) {
        std::fputs("oribund: no host is installed; call oribund::Host::install() before using panels or services\n",
                   stderr);
        std::abort();
    }
    return *host;
}

} // namespace oribund
