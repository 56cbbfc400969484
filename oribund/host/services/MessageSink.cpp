#include "oribund/host/services/MessageSink.h"

#include "oribund/host/services/Host.h"

namespace oribund
{

MessageSink::~MessageSink() = default;

void showMessage(const UIString& message, MessageSink::Severity severity)
{
    Host::current().messages().show(message, severity);
}

} // namespace oribund
