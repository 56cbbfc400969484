#include "workbench/engine/worker/graph/ServiceFaults.h"

#include <mlt++/Mlt.h>

#include <cstdarg>
#include <mutex>
#include <set>

namespace workbench
{

namespace
{

struct Faults {
    std::mutex mutex;
    std::set<const void*> services;
};

Faults& faults()
{
    static auto* const known = new Faults; // a service may complain while the program ends
    return *known;
}

void noteFault(void* service, int level, const char*, va_list)
{
    if (!service || level > MLT_LOG_ERROR)
        return;
    const std::lock_guard lock(faults().mutex);
    faults().services.insert(service);
}

} // namespace

void listenForFaults()
{
    mlt_log_set_callback(noteFault);
}

bool hasFault(Mlt::Service& service)
{
    const std::lock_guard lock(faults().mutex);
    return faults().services.contains(service.get_service());
}

void forgetFault(Mlt::Service& service)
{
    const std::lock_guard lock(faults().mutex);
    faults().services.erase(service.get_service());
}

} // namespace workbench
