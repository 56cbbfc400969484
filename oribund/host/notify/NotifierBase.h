#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/notify/NotifyMsgTypeDictionary.h"

#include <atomic>
#include <cstdint>

namespace oribund
{

class NotifierBase;

/**
 * One registration with a notifier. The registration is embedded in the observer, so that registering allocates
 * nothing, and ends with it.
 */
class ORIBUND_API CallbackNode
{
public:
    CallbackNode(const CallbackNode&) = delete;
    CallbackNode& operator=(const CallbackNode&) = delete;

    /** Whether it is registered; false again when the notifier has been destroyed. */
    bool attached() const noexcept { return notifier_.load(std::memory_order_acquire) != nullptr; }

    /** Ends the registration; without one, does nothing. */
    void detach() noexcept;

protected:
    CallbackNode() noexcept = default;

    ~CallbackNode() { detach(); }

private:
    friend class NotifierBase;

    std::atomic<CallbackNode*> next_{nullptr};
    std::uint64_t serial_ = 0;
    std::atomic<NotifierBase*> notifier_{nullptr};
    CallbackNode* previous_ = nullptr;
    NotifyMsgType type_ = NotifyMsgType::Any;
};

/**
 * The list of registrations of a notifier, in the order in which they were made, whatever the event that they hear.
 *
 * While a notification runs, callbacks may add registrations (heard from the next notification on), remove any,
 * destroy any observer, notify again, and destroy the notifier.
 *
 * Changes of the list are guarded by a process-wide critical section; registering is safe on any thread at any time.
 * A notification itself takes no lock: it runs on the thread that changed the value, one thread at a time for each
 * notifier, and an observer may be removed on another thread only while none runs.
 */
class ORIBUND_API NotifierBase
{
public:
    NotifierBase(const NotifierBase&) = delete;
    NotifierBase& operator=(const NotifierBase&) = delete;

    bool hasObservers() const noexcept { return first_.load(std::memory_order_relaxed) != nullptr; }

    /** Whether a notification of this notifier is running. */
    bool notifying() const noexcept { return passes_ != nullptr; }

protected:
    NotifierBase() noexcept = default;
    /** Ends all registrations and the notifications that are running. */
    ~NotifierBase();

    /** Appends; a node that was registered anywhere leaves that place first. */
    void add(CallbackNode& node, NotifyMsgType type) noexcept;

    /** A walk over the nodes that were registered when it began. Lives on the stack of a notification. */
    class Pass
    {
    public:
        explicit Pass(NotifierBase& notifier) noexcept
            : notifier_(&notifier)
            , outer_(notifier.passes_)
            , next_(notifier.first_.load(std::memory_order_acquire))
            , last_(notifier.lastSerial_.load(std::memory_order_relaxed))
        {
            notifier.passes_ = this;
        }

        ~Pass()
        {
            if (notifier_)
                notifier_->passes_ = outer_;
        }

        Pass(const Pass&) = delete;
        Pass& operator=(const Pass&) = delete;

        /** The next node, which the callback may destroy; null at the end. */
        CallbackNode* take() noexcept
        {
            CallbackNode* const node = next_;
            if (!node || node->serial_ > last_)
                return nullptr;
            next_ = node->next_.load(std::memory_order_acquire);
            return node;
        }

        static bool wants(const CallbackNode& node, NotifyMsgType type) noexcept
        {
            return node.type_ == NotifyMsgType::Any || node.type_ == type;
        }

    private:
        friend class NotifierBase;

        NotifierBase* notifier_; // null once it has been destroyed
        Pass* outer_;            // the notification within which this one runs
        CallbackNode* next_;
        std::uint64_t last_;
    };

private:
    friend class CallbackNode;

    static CriticalSection& section() noexcept;
    void unlink(CallbackNode& node) noexcept;

    std::atomic<CallbackNode*> first_{nullptr};
    std::atomic<std::uint64_t> lastSerial_{0};
    Pass* passes_ = nullptr;
    CallbackNode* tail_ = nullptr;
};

} // namespace oribund
