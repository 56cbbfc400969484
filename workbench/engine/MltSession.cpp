#include "workbench/engine/MltSession.h"

#include <mlt++/Mlt.h>

#include <atomic>
#include <clocale>
#include <cstdlib>
#include <mutex>

namespace workbench
{

namespace
{

// Guards the factory: opening must wait until a closing session is done.
std::mutex factoryMutex;
std::weak_ptr<MltSession> current;
std::atomic<bool> threadAbandoned{false};

// These two modules link another major version of the toolkit that the skin uses; both in one process is a crash.
constexpr const char* kDeniedModules = "libmltqt:libmltglaxnimate";

} // namespace

std::shared_ptr<MltSession> MltSession::open(std::string* problem)
{
    std::unique_lock lock(factoryMutex);
    if (std::shared_ptr<MltSession> session = current.lock())
        return session;

    useNumericLocale();
    setenv("MLT_REPOSITORY_DENY", kDeniedModules, 1);
    Mlt::Repository* repository = Mlt::Factory::init();
    if (!repository) {
        if (problem)
            *problem = "The media framework cannot be started; is it installed?";
        return {};
    }
    mlt_log_set_level(MLT_LOG_FATAL);
    std::shared_ptr<MltSession> session(new MltSession(repository));
    current = session;
    return session;
}

MltSession::MltSession(Mlt::Repository* repository)
    : repository_(repository)
{
}

MltSession::~MltSession()
{
    const std::lock_guard lock(factoryMutex);
    // Another thread may have opened a new one between the end of the last reference and this line.
    if (current.expired())
        Mlt::Factory::close();
}

void MltSession::useNumericLocale()
{
    std::setlocale(LC_NUMERIC, "C");
}

void MltSession::noteAbandonedThread()
{
    threadAbandoned = true;
    const std::lock_guard lock(factoryMutex);
    // Never released, not even at the end of the program: the stuck thread may still use the factory.
    static auto* const kept = new std::shared_ptr<MltSession>();
    if (!*kept)
        *kept = current.lock();
}

bool MltSession::hasAbandonedThread()
{
    return threadAbandoned;
}

} // namespace workbench
