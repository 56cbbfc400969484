#pragma once

#include "oribund/host/notify/NotifierBase.h"

namespace oribund
{

/** What a notifier of `Event` calls. MethodCallback is the usual one. */
template <class Event>
class ORIBUND_API CallbackBase : public CallbackNode
{
public:
    /**
     * The result is for the observer's own use; notifiers ignore it. Observers do not throw: an exception that comes
     * out of one is logged, and the others are told all the same.
     */
    virtual int call(const Event& event) = 0;

protected:
    CallbackBase() noexcept = default;
    ~CallbackBase() = default;
};

/** Tells its registered callbacks of events, in the order of registration; see NotifierBase for what is safe. */
template <class Event>
class ORIBUND_API Notifier : public NotifierBase
{
public:
    /** Calls `callback` from the next notification on, as long as neither side is destroyed. */
    void registerInterest(CallbackBase<Event>& callback, NotifyMsgType type = NotifyMsgType::Any) noexcept
    {
        add(callback, type);
    }

    /** Calls every callback. */
    void notify(const Event& event)
    {
        forEachNode([&event](CallbackNode& node) { callSafely(node, event); });
    }

    /** Calls those callbacks that were registered for this kind of message or for any. */
    void notify(const Event& event, NotifyMsgType type)
    {
        forEachNode(type, [&event](CallbackNode& node) { callSafely(node, event); });
    }

private:
    static void callSafely(CallbackNode& node, const Event& event)
    {
        // Notifications are sent from destructors too, where an exception would end the program.
        try {
            static_cast<CallbackBase<Event>&>(node).call(event);
        } catch (...) {
            reportException();
        }
    }
};

} // namespace oribund
