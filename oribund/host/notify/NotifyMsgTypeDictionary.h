#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/notify/CriticalSection.h"

#include <vector>

namespace oribund
{

/** Number of a kind of message; a notifier that sends several kinds is asked for one or for all of them. */
enum class NotifyMsgType : unsigned {
    Any = 0,         ///< every kind
    ValueChange = 1, ///< what a value server sends
};

/** The process-wide numbers of message kinds, by name. Any thread may ask. */
class ORIBUND_API NotifyMsgTypeDictionary
{
public:
    static NotifyMsgTypeDictionary& instance();

    NotifyMsgTypeDictionary(const NotifyMsgTypeDictionary&) = delete;
    NotifyMsgTypeDictionary& operator=(const NotifyMsgTypeDictionary&) = delete;

    NotifyMsgType valueChange() const noexcept { return NotifyMsgType::ValueChange; }

    /** The number of the kind called `name`, given out on first use; the same for the life of the process. */
    NotifyMsgType typeFor(const String& name);
    /** The name of a kind, for logs; empty for a number that was never given out. */
    String nameOf(NotifyMsgType type) const;

private:
    NotifyMsgTypeDictionary();

    mutable CriticalSection section_;
    std::vector<String> names_; // indexed by number
};

} // namespace oribund
