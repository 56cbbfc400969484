#pragma once

#include "oribund/host/notify/ValServer.h"

#include <memory>
#include <vector>

/** What PointerServer calls. Its implementation is out of the compiler's sight, as it is in a program. */
class Listener
{
public:
    virtual ~Listener() = default;
    virtual void onValue(const oribund::ValServerEvent<double>& event) = 0;
};

/** The least that survives a removal while it notifies: holes are left then and closed by the outermost pass. */
class PointerServer
{
public:
    void add(Listener* listener) { listeners_.push_back(listener); }

    void remove(Listener* listener)
    {
        for (Listener*& entry : listeners_) {
            if (entry == listener)
                entry = nullptr;
        }
        holes_ = true;
        closeHoles();
    }

    bool set(double value)
    {
        if (value_ == value)
            return false;
        value_ = value;
        const oribund::ValServerEvent<double> event{oribund::ValEventKind::Changed, oribund::ChangeKind::Single,
                                                    &value_};
        ++depth_;
        const std::size_t count = listeners_.size();
        for (std::size_t i = 0; i < count; ++i) {
            if (Listener* const listener = listeners_[i])
                listener->onValue(event);
        }
        --depth_;
        closeHoles();
        return true;
    }

private:
    void closeHoles()
    {
        if (depth_ > 0 || !holes_)
            return;
        std::erase(listeners_, nullptr);
        holes_ = false;
    }

    double value_ = 0.0;
    std::vector<Listener*> listeners_;
    int depth_ = 0;
    bool holes_ = false;
};

/** A listener that adds up what it hears, and leaves the server when it is destroyed. */
std::unique_ptr<Listener> makePointerListener(PointerServer& server);
