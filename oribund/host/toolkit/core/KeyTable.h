#pragma once

#include "oribund/host/toolkit/core/Event.h"

#include <algorithm>
#include <span>

namespace oribund
{

/** What a key pressed by itself, or with Shift, does to a widget. */
template <class Widget>
struct KeyAction {
    Key key;
    void (*run)(Widget& widget, const Event& press);
};

/** The one list of a widget's keys, for usesKey() to ask and handleKeyEvent() to run. Lives as long as the program. */
template <class Widget>
class KeyTable
{
public:
    explicit constexpr KeyTable(std::span<const KeyAction<Widget>> actions)
        : actions_(actions)
    {
    }

    bool has(const Event& press) const { return find(press) != nullptr; }

    /** Does what the key does, which may destroy the widget; false for any other key. */
    bool run(Widget& widget, const Event& event) const
    {
        const KeyAction<Widget>* const action = find(event);
        if (action)
            action->run(widget, event);
        return action != nullptr;
    }

private:
    const KeyAction<Widget>* find(const Event& press) const
    {
        const auto found = std::ranges::find(actions_, press.key, &KeyAction<Widget>::key);
        return press.isPlainKeyPress() && found != actions_.end() ? &*found : nullptr;
    }

    std::span<const KeyAction<Widget>> actions_;
};

} // namespace oribund
