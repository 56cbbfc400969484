#include "workbench/engine/worker/graph/MltSession.h"

#include "workbench/engine/worker/catalogue/CatalogueReader.h"
#include "workbench/engine/worker/graph/ServiceFaults.h"
#include "workbench/model/projection/AllowList.h"

#include <mlt++/Mlt.h>

#include <clocale>
#include <cstdlib>
#include <mutex>
#include <utility>

namespace workbench
{

namespace
{

std::mutex factoryMutex;

// These two modules link another major version of the toolkit that the skin uses; both in one process is a crash.
constexpr const char* kDeniedModules = "libmltqt:libmltglaxnimate";

} // namespace

std::shared_ptr<MltSession> MltSession::open(std::string* problem)
{
    const std::lock_guard lock(factoryMutex);
    // Never deleted: at the end of the program a thread may still be stuck in the framework.
    static auto* const session = new std::shared_ptr<MltSession>();
    if (*session)
        return *session;

    useNumericLocale();
    setenv("MLT_REPOSITORY_DENY", kDeniedModules, 1);
    Mlt::Repository* repository = Mlt::Factory::init();
    if (!repository) {
        if (problem)
            *problem = "The media framework cannot be started; is it installed?";
        return {};
    }
    mlt_log_set_level(MLT_LOG_FATAL);
    listenForFaults();
    session->reset(new MltSession(repository));
    return *session;
}

MltSession::MltSession(Mlt::Repository* repository)
    : repository_(repository)
{
}

std::shared_ptr<const AllowList> MltSession::allowList()
{
    const std::lock_guard lock(allowMutex_);
    if (!allowList_)
        allowList_ = std::make_shared<const AllowList>(readCatalogue(*this).catalogue);
    return allowList_;
}

void MltSession::setAllowList(std::shared_ptr<const AllowList> allowList)
{
    const std::lock_guard lock(allowMutex_);
    allowList_ = std::move(allowList);
}

void MltSession::useNumericLocale()
{
    std::setlocale(LC_NUMERIC, "C");
}

} // namespace workbench
