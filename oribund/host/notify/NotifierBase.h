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
    bool notifying() const noexcept { return passes_.load(std::memory_order_relaxed) != nullptr; }

    /** Where the exception of an observer is written; null for stderr. Takes one line, without its line feed. */
    using Report = void (*)(const char* line);
    static void setExceptionReport(Report report) noexcept;

protected:
    NotifierBase() noexcept = default;
    /** Ends all registrations and the notifications that are running. */
    ~NotifierBase();

    /** To be called while an exception is handled. */
    static void reportException() noexcept;

    /** Appends; a node that was registered anywhere leaves that place first. */
    void add(CallbackNode& node, NotifyMsgType type) noexcept;

    /** Calls `call(node)` for each node that was registered when it began and still is when its turn comes. */
    template <class Call>
    void forEachNode(Call call)
    {
        CallbackNode* node = first_.load(std::memory_order_acquire);
        if (!node)
            return;
        const std::uint64_t last = lastSerial_.load(std::memory_order_relaxed);
        Pass pass(*this);
        do {
            // The successor stays in a register: reading it back from the pass for each node would take longer than
            // the call. Only a removal of that very node makes it be looked up again.
            CallbackNode* next = node->next_.load(std::memory_order_acquire);
            pass.next = next;
            call(*node);
            if (pass.disturbed) [[unlikely]] {
                pass.disturbed = false;
                next = pass.next;
            }
            node = next;
        } while (node && node->serial_ <= last);
    }

    /** Calls `call(node)` as forEachNode(), for the nodes that want this type of message only. */
    template <class Call>
    void forEachNode(NotifyMsgType type, Call call)
    {
        forEachNode([&](CallbackNode& node) {
            if (node.type_ == NotifyMsgType::Any || node.type_ == type)
                call(node);
        });
    }

private:
    friend class CallbackNode;

    /** A running notification; lives on its stack, and is what a removal brings up to date. */
    struct Pass {
        explicit Pass(NotifierBase& owner) noexcept
            : notifier(&owner)
            , outer(owner.passes_.load(std::memory_order_relaxed))
        {
            owner.passes_.store(this, std::memory_order_relaxed);
        }

        ~Pass()
        {
            if (notifier)
                notifier->passes_.store(outer, std::memory_order_relaxed);
        }

        Pass(const Pass&) = delete;
        Pass& operator=(const Pass&) = delete;

        NotifierBase* notifier; // null once it has been destroyed
        Pass* const outer;      // the notification within which this one runs
        CallbackNode* next = nullptr;
        bool disturbed = false; // `next` is another than the walk last saw
    };

    static CriticalSection& section() noexcept;
    void unlink(CallbackNode& node) noexcept;

    std::atomic<CallbackNode*> first_{nullptr};
    std::atomic<std::uint64_t> lastSerial_{0};
    std::atomic<Pass*> passes_{nullptr}; // the running notifications, the innermost first
    CallbackNode* tail_ = nullptr;
};

} // namespace oribund
