#pragma once

#include "oribund/host/notify/Notifier.h"

namespace oribund
{

/**
 * Calls a method of its owner for each event, and is the guard of that registration: a member of the owner, it ends
 * the registration when the owner goes. Registering allocates nothing.
 *
 *     MethodCallback<Panel, ValServerEvent<double>, int> timeCallback_{this, &Panel::onTime};
 */
template <class Owner, class Event, class Result = int>
class ORIBUND_API MethodCallback final : public CallbackBase<Event>
{
public:
    using Method = Result (Owner::*)(const Event&);

    MethodCallback(Owner* owner, Method method) noexcept
        : owner_(owner)
        , method_(method)
    {
    }

    /** Registers, leaving the notifier where it was registered before. */
    void attach(Notifier<Event>& notifier, NotifyMsgType type = NotifyMsgType::Any) noexcept
    {
        notifier.registerInterest(*this, type);
    }

    int call(const Event& event) override { return static_cast<int>((owner_->*method_)(event)); }

private:
    Owner* owner_;
    Method method_;
};

/** As MethodCallback, for a method that is always the same: smaller, for what there are thousands of. */
template <class Owner, class Event, int (Owner::*method)(const Event&)>
class FixedMethodCallback final : public CallbackBase<Event>
{
public:
    explicit FixedMethodCallback(Owner* owner) noexcept
        : owner_(owner)
    {
    }

    void attach(Notifier<Event>& notifier) noexcept { notifier.registerInterest(*this); }

    int call(const Event& event) override { return (owner_->*method)(event); }

private:
    Owner* owner_;
};

} // namespace oribund
