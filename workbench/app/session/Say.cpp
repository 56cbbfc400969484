#include "workbench/app/session/Say.h"

#include "oribund/host/base/UIString.h"

namespace workbench
{

void say(const std::string& message, oribund::MessageSink::Severity severity)
{
    oribund::showMessage(oribund::UIString(oribund::toWide(message)), severity);
}

void warn(const std::string& message)
{
    say(message, oribund::MessageSink::Severity::Warning);
}

std::string quoted(const std::string& text)
{
    return "\u201c" + text + "\u201d";
}

std::string quotedFile(const std::string& path)
{
    const std::size_t slash = path.find_last_of('/');
    return quoted(slash == std::string::npos ? path : path.substr(slash + 1));
}

} // namespace workbench
