#pragma once

#include "oribund/host/services/MessageSink.h"

#include <string>

namespace workbench
{

/** Shows a UTF-8 message through the host, without stopping anybody's work. User-interface thread only. */
void say(const std::string& message,
         oribund::MessageSink::Severity severity = oribund::MessageSink::Severity::Information);

/** The same for what may cost the user something. */
void warn(const std::string& message);

/** In quotation marks, for messages. */
std::string quoted(const std::string& text);

/** The last part of a path, in quotation marks. */
std::string quotedFile(const std::string& path);

} // namespace workbench
