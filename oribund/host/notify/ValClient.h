#pragma once

#include "oribund/host/base/IdStamp.h"
#include "oribund/host/notify/MethodCallback.h"
#include "oribund/host/notify/ValServer.h"

namespace oribund
{

/** What clients of all types have in common: the count that holds their notifications off. */
class ORIBUND_API ValClientBase
{
public:
    virtual ~ValClientBase() = default;

    /** Notifications are not delivered between a suspend() and its resume(); pairs nest. */
    void suspend() noexcept { ++suspended_; }

    void resume() noexcept { --suspended_; }

    bool suspended() const noexcept { return suspended_ > 0; }

    /** Chosen by the owner; means nothing to the client. */
    const IdStamp& clientId() const noexcept { return id_; }

    void setClientId(const IdStamp& id) noexcept { id_ = id; }

protected:
    ValClientBase() = default;

private:
    int suspended_ = 0;
    IdStamp id_;
};

/**
 * A view of a server's value that hears of its changes: bound to one server at a time, or to none. A client is unbound
 * by its server's end, reads a default value then (0.0, false, an empty text) and ignores writes. The user interface's
 * thread only.
 */
template <class T>
class ORIBUND_API ValClient : public ValClientBase
{
public:
    ValClient() = default;

    /** Bound at once; null leaves it unbound. */
    explicit ValClient(ValServer<T>* server) { registerWith(server); }

    /** Bound to the same server, not suspended, with an id of its own. */
    ValClient(const ValClient& other)
        : ValClientBase()
    {
        registerWith(other.server_);
    }

    /** Binds to the other's server. */
    ValClient& operator=(const ValClient& other)
    {
        if (this != &other)
            registerWith(other.server_);
        return *this;
    }

    /** Drops any earlier registration first; null just does that. */
    void registerWith(ValServer<T>* server)
    {
        callback_.detach();
        server_ = server;
        if (server_)
            callback_.attach(server_->notifier(), NotifyMsgTypeDictionary::instance().valueChange());
    }

    bool bound() const noexcept { return server_ != nullptr; }

    ValServer<T>* getValServer() const noexcept { return server_; }

    T getServerValue() const { return server_ ? server_->get() : T(); }

    operator T() const { return getServerValue(); }

    /** Asks the server to take the value. */
    void setServerValue(const T& value)
    {
        if (server_)
            server_->set(value);
    }

    /** As setServerValue(); returns what the server holds then, which may have limited it. Unbound: the argument. */
    T operator=(const T& value)
    {
        setServerValue(value);
        return server_ ? server_->get() : value;
    }

protected:
    /** The value has changed. */
    virtual void valChangedNtfy(const ValServerEvent<T>&) {}

    /** The value is about to change; the event holds the old one. */
    virtual void valPreChangedNtfy(const ValServerEvent<T>&) {}

private:
    int handleValueChange(const ValServerEvent<T>& event)
    {
        switch (event.kind) {
        case ValEventKind::Changed:
            if (!suspended())
                valChangedNtfy(event);
            break;
        case ValEventKind::AboutToChange:
            if (!suspended())
                valPreChangedNtfy(event);
            break;
        case ValEventKind::ServerGone:
            registerWith(nullptr);
            break;
        }
        return 0;
    }

    ValServer<T>* server_ = nullptr;
    MethodCallback<ValClient, ValServerEvent<T>, int> callback_{this, &ValClient::handleValueChange};
};

} // namespace oribund
