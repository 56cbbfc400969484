#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/effects/EffectChange.h"
#include "oribund/host/notify/Notifier.h"

#include <optional>

namespace oribund
{

/**
 * Tells the clients of a monitor what has changed. While it is held it gathers that, and tells it as one change in the
 * end: of all effects where it were several, of anything where the changes were of several kinds and not all told by
 * the parameters themselves.
 */
class ORIBUND_API EffectChangeRelay
{
public:
    /** Holds for a scope. Holds nest: the outermost one counts. */
    class Hold
    {
    public:
        explicit Hold(EffectChangeRelay& relay);
        ~Hold();

        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;

    private:
        EffectChangeRelay& relay_;
    };

    Notifier<EffectChangeDescription>& changes() { return changes_; }

    void tell(const EffectChangeDescription& change);

private:
    Notifier<EffectChangeDescription> changes_;
    std::optional<EffectChangeDescription> gathered_;
    int holds_ = 0;
};

} // namespace oribund
