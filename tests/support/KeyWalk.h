#pragma once

#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/EventRouter.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace oribund::test
{

/** Every key, by itself and with each key that is held with others, and some letters. */
inline std::vector<Event> everyPress()
{
    std::vector<Event> presses;
    for (const unsigned held : {0u, Event::kShift, Event::kCtrl, Event::kAlt, Event::kMeta}) {
        for (int key = static_cast<int>(Key::Enter); key <= static_cast<int>(Key::F2); ++key)
            presses.push_back(Event::keyPress(static_cast<Key>(key), held));
        for (const wchar_t letter : {L'a', L'b', L'5'})
            presses.push_back(Event::character(letter, held));
    }
    return presses;
}

inline std::string nameOf(const Event& press)
{
    return "key " + std::to_string(static_cast<int>(press.key)) + " '" + toUTF8(press.text).c_str() + "' held " +
           std::to_string(press.modifiers >> 24);
}

/** What stands on a canvas for the length of one key. */
struct KeyStage {
    virtual ~KeyStage() = default;

    virtual Canvas& canvas() = 0;
};

/** Tries every key on a stage made anew for each: it is taken exactly when it was said to be of use. The number used.
 */
inline int walkKeys(const std::function<std::unique_ptr<KeyStage>()>& make)
{
    int used = 0;
    for (const Event& press : everyPress()) {
        const std::unique_ptr<KeyStage> stage = make();
        const bool said = EventRouter::of(stage->canvas()).usesKey(press);
        EXPECT_EQ(stage->canvas().inject(press), said) << nameOf(press);
        used += said ? 1 : 0;
    }
    return used;
}

} // namespace oribund::test
