#include "workbench/app/session/WorkbenchHost.h"

#include "oribund/host/base/UIString.h"

#include <cstdio>

namespace workbench
{

using oribund::WString;

WorkbenchHost::WorkbenchHost(oribund::EditorPreferences& preferences)
    : preferences_(preferences)
    , before_(Host::install(this))
{
}

WorkbenchHost::~WorkbenchHost()
{
    shutdown_.run(oribund::Shutdown::eExitType::Normal);
    Host::install(before_);
}

void WorkbenchHost::show(const oribund::UIString& message, Severity severity)
{
    const WString text = oribund::displayText(message);
    if (show_)
        show_(text, severity);
    else
        std::fprintf(stderr, "%s\n", oribund::toUTF8(text).c_str());
}

void WorkbenchHost::write(const char* text)
{
    std::fputs(text, stderr);
}

} // namespace workbench
