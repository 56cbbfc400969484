#include "oribund/host/notify/NotifierBase.h"

#include <cstdio>
#include <exception>

namespace oribund
{

namespace
{
void writeToStderr(const char* line)
{
    std::fprintf(stderr, "%s\n", line);
}

std::atomic<NotifierBase::Report> exceptionReport{&writeToStderr};
} // namespace

void NotifierBase::setExceptionReport(Report report) noexcept
{
    exceptionReport.store(report ? report : &writeToStderr);
}

void NotifierBase::reportException() noexcept
{
    char line[512];
    try {
        throw;
    } catch (const std::exception& exception) {
        std::snprintf(line, sizeof line, "An observer threw an exception: %s", exception.what());
    } catch (...) {
        std::snprintf(line, sizeof line, "An observer threw an exception.");
    }
    exceptionReport.load()(line);
}

CriticalSection& NotifierBase::section() noexcept
{
    // Never destroyed: observers that are static objects leave their notifiers after the end of main().
    static CriticalSection& section = *new CriticalSection;
    return section;
}

void CallbackNode::detach() noexcept
{
    // Most observers that are destroyed while unregistered never see the lock.
    if (!attached())
        return;
    const CriticalSection::Lock lock(NotifierBase::section());
    if (NotifierBase* const notifier = notifier_.load(std::memory_order_relaxed))
        notifier->unlink(*this);
}

NotifierBase::~NotifierBase()
{
    const CriticalSection::Lock lock(section());
    while (CallbackNode* const node = first_.load(std::memory_order_relaxed))
        unlink(*node);
    for (Pass* pass = passes_.load(std::memory_order_relaxed); pass; pass = pass->outer)
        pass->notifier = nullptr;
}

void NotifierBase::add(CallbackNode& node, NotifyMsgType type) noexcept
{
    const CriticalSection::Lock lock(section());
    if (NotifierBase* const earlier = node.notifier_.load(std::memory_order_relaxed))
        earlier->unlink(node);

    const std::uint64_t serial = lastSerial_.load(std::memory_order_relaxed) + 1;
    lastSerial_.store(serial, std::memory_order_relaxed);
    node.serial_ = serial;
    node.type_ = type;
    node.previous_ = tail_;
    node.next_.store(nullptr, std::memory_order_relaxed);
    node.notifier_.store(this, std::memory_order_relaxed);
    // The node is complete before a notification on another thread can come upon it.
    (tail_ ? tail_->next_ : first_).store(&node, std::memory_order_release);
    tail_ = &node;
}

void NotifierBase::unlink(CallbackNode& node) noexcept
{
    CallbackNode* const next = node.next_.load(std::memory_order_relaxed);
    for (Pass* pass = passes_.load(std::memory_order_relaxed); pass; pass = pass->outer) {
        if (pass->next == &node) {
            pass->next = next;
            pass->disturbed = true;
        }
    }
    (node.previous_ ? node.previous_->next_ : first_).store(next, std::memory_order_release);
    (next ? next->previous_ : tail_) = node.previous_;
    node.previous_ = nullptr;
    node.next_.store(nullptr, std::memory_order_relaxed);
    node.notifier_.store(nullptr, std::memory_order_release);
}

} // namespace oribund
