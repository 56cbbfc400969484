#pragma once

#include "tests/support/Desk.h"

#include "oribund/host/toolkit/core/Glob.h"
#include "oribund/host/toolkit/core/GlobChange.h"
#include "oribund/host/toolkit/core/Skin.h"
#include "oribund/host/toolkit/layout/TabOrderable.h"

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace oribund::test
{

/** A glob that writes down what happens to it. */
class Probe : public Glob, public TabOrderable
{
public:
    Probe(const char* name, const XY<int>& size)
        : Glob(infoFor(name, size))
        , name_(name)
    {
    }

    Glob& tabGlob() override { return *this; }

    bool react(const Event& event) override
    {
        seen.push_back(event);
        if (journal)
            *journal += name_ + signOf(event.code) + " ";
        // Nothing of this glob may be used after the hook: it may have destroyed it.
        const bool answer = takes;
        if (const auto hook = onEvent)
            hook(event);
        return answer;
    }

    void draw(CanvasRenderer&) override { ++draws; }

    bool wantsFocus() const override
    {
        ++asked;
        return Glob::wantsFocus();
    }

    std::ptrdiff_t count(EventCode code) const { return std::ranges::count(seen, code, &Event::code); }

    const Event& last() const { return seen.back(); }

    bool takes = false;
    std::function<void(const Event&)> onEvent;
    std::string* journal = nullptr;
    std::vector<Event> seen;
    int draws = 0;
    static inline int asked = 0; ///< whether any of them takes the keyboard

private:
    static GlobCreationInfo infoFor(const char* name, const XY<int>& size)
    {
        GlobCreationInfo info(static_cast<unsigned short>(size.x), static_cast<unsigned short>(size.y));
        info.id = name;
        return info;
    }

    static char signOf(EventCode code)
    {
        constexpr EventCode kKnown[] = {EventCode::MousePress, EventCode::MouseRelease, EventCode::MouseMove,
                                        EventCode::MouseEnter, EventCode::MouseLeave,   EventCode::MouseCancel,
                                        EventCode::FocusIn,    EventCode::FocusOut,     EventCode::KeyPress,
                                        EventCode::MouseWheel, EventCode::Message};
        return "+-~><x()kom?"[std::ranges::find(kKnown, code) - std::begin(kKnown)];
    }

    std::string name_;
};

/** A desk of 200 by 100 for probes. */
class Scene : public Desk
{
public:
    explicit Scene(Skin* skin = nullptr)
        : Desk({200, 100}, skin)
    {
    }

    Probe* add(const char* name, const Kt::Box<int>& box, Glob* parent = nullptr)
    {
        auto probe = std::make_unique<Probe>(name, box.size());
        if (!parent)
            return panel->addWidget(std::move(probe), Glob::UserTopLeft(box.left, box.top));
        probe->setPosition(box.topLeft());
        Probe* const raw = probe.get();
        parent->addChild(std::move(probe));
        return raw;
    }
};

} // namespace oribund::test
