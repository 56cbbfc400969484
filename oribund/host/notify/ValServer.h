#pragma once

#include "oribund/host/notify/ChangeKind.h"
#include "oribund/host/notify/Notifier.h"

#include <utility>

namespace oribund
{

/** What a value server, or anything that changes like one, has to tell. */
enum class ValEventKind {
    Changed = 0,       ///< the value has been replaced
    AboutToChange = 1, ///< it still is what it was, and will be replaced
    ServerGone = 2,    ///< the server is being destroyed
};

template <class T>
struct ValServerEvent {
    ValEventKind kind = ValEventKind::Changed;
    ChangeKind change = ChangeKind::Single;
    /**
     * The value as it now stands: when an earlier observer has set another one, that. Not to be used any more after
     * destroying the server from within a callback.
     */
    const T* value = nullptr;
};

/** What servers of all types have in common. */
class ORIBUND_API ValServerBase
{
public:
    virtual ~ValServerBase() = default;
    ValServerBase(const ValServerBase&) = delete;
    ValServerBase& operator=(const ValServerBase&) = delete;

protected:
    ValServerBase() = default;
};

/**
 * Holds a value and tells its observers when it changes. Used on one thread, the one of the user interface, on which
 * the observers are called; nothing is allocated beyond what copying a `T` does.
 */
template <class T>
class ORIBUND_API ValServer : public ValServerBase
{
public:
    using Event = ValServerEvent<T>;

    ValServer() = default;

    explicit ValServer(T value)
        : value_(std::move(value))
    {
    }

    ~ValServer() override { send(ValEventKind::ServerGone, ChangeKind::Single); }

    const T& get() const noexcept { return value_; }

    /**
     * Takes a value and, if it differs from the one held, tells the observers. True when it did. A derived server that
     * limits what it takes overrides this.
     */
    virtual bool set(const T& value, ChangeKind kind = ChangeKind::Single)
    {
        if (value_ == value)
            return false;
        setAlways(value, kind);
        return true;
    }

    /** As set(), but the observers are told even when the value is the same. */
    void setAlways(const T& value, ChangeKind kind = ChangeKind::Single)
    {
        value_ = value;
        send(ValEventKind::Changed, kind);
    }

    /** Tells the observers that the value is about to be replaced. */
    void preChange(ChangeKind kind) { send(ValEventKind::AboutToChange, kind); }

    Notifier<Event>& notifier() noexcept { return notifier_; }

private:
    void send(ValEventKind kind, ChangeKind change) { notifier_.notify(Event{kind, change, &value_}); }

    T value_{};
    Notifier<Event> notifier_;
};

} // namespace oribund
