#include "workbench/engine/worker/graph/ServiceFaults.h"

#include <mlt++/Mlt.h>

#include <cstdarg>
#include <mutex>
#include <set>
#include <string_view>

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

/** An effect that looks ahead has nothing to give at first, and is whole all the same. */
bool isOfOneFrame(std::string_view message)
{
    return message.find("get frame from") != std::string_view::npos ||
           message.find("return format") != std::string_view::npos;
}

void noteFault(void* service, int level, const char* message, va_list)
{
    if (!service || level > MLT_LOG_ERROR || isOfOneFrame(message))
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
