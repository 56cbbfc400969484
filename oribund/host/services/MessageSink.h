#pragma once

#include "oribund/host/base/Export.h"

namespace oribund
{

class UIString;

/** Where a refused user action is explained. A host shows the message without stopping the user's work. */
class ORIBUND_API MessageSink
{
public:
    enum class Severity { Information, Warning, Error };

    virtual ~MessageSink();

    /** Shows the message. It says what was refused and what to do; the state is as it was. User-interface thread. */
    virtual void show(const UIString& message, Severity severity) = 0;
};

/** Shows a message through the installed host. */
ORIBUND_API void showMessage(const UIString& message, MessageSink::Severity severity = MessageSink::Severity::Warning);

} // namespace oribund
