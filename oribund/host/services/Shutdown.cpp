#include "oribund/host/services/Shutdown.h"

#include "oribund/host/services/Host.h"

#include <algorithm>
#include <utility>

namespace oribund
{

Shutdown::~Shutdown() = default;

void Shutdown::addCallback(Callback callback, int priority)
{
    Host::current().shutdown().add(std::move(callback), priority);
}

ShutdownSequence::ShutdownSequence() = default;
ShutdownSequence::~ShutdownSequence() = default;

void ShutdownSequence::add(Callback callback, int priority)
{
    const auto after = std::find_if(entries_.begin(), entries_.end(),
                                    [priority](const Entry& entry) { return entry.priority < priority; });
    entries_.insert(after, Entry{priority, std::move(callback)});
}

void ShutdownSequence::run(eExitType type)
{
    while (!entries_.empty()) {
        const Callback next = std::move(entries_.front().callback);
        entries_.erase(entries_.begin());
        next(type);
    }
}

} // namespace oribund
