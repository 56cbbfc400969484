#pragma once

#include "oribund/host/notify/MethodCallback.h"
#include "oribund/host/notify/ValServer.h"

#include <functional>
#include <utility>
#include <vector>

namespace oribund::test
{

/** What is kept of an event. */
template <class Event>
struct Kept {
    using Type = Event;

    static Type of(const Event& event) { return event; }
};

/** The event of a server points at a value that goes on changing: a copy is kept. */
template <class T>
struct Kept<ValServerEvent<T>> {
    struct Type {
        ValEventKind kind;
        ChangeKind change;
        T value;

        bool operator==(const Type&) const = default;
    };

    static Type of(const ValServerEvent<T>& event) { return {event.kind, event.change, *event.value}; }
};

/** Keeps all that a notifier tells, and then does what a test wants, which may be to destroy it. */
template <class Event>
class Listener
{
public:
    using Then = std::function<void(const Event&)>;

    explicit Listener(Notifier<Event>& notifier, Then does = {})
        : then(std::move(does))
    {
        callback.attach(notifier);
    }

    std::size_t count() const { return heard.size(); }

    std::vector<typename Kept<Event>::Type> heard;
    Then then;
    MethodCallback<Listener, Event> callback{this, &Listener::hear};

private:
    int hear(const Event& event)
    {
        heard.push_back(Kept<Event>::of(event));
        if (const Then does = then)
            does(event);
        return 0;
    }
};

} // namespace oribund::test
