#pragma once

#include "tests/scenarios/keyframes/Stage.h"
#include "tests/skin/SkinSupport.h"

#include <map>
#include <utility>

namespace workbench::scenes
{

using oribund::qt::fromQt;
using oribund::qt::toQt;

/** A window with the real skin; the mouse and the keys are Qt's. */
class QtStage final : public Stage
{
public:
    oribund::Canvas& canvas() override { return window_.surface->canvas(); }

    void show(std::unique_ptr<oribund::StandardPanel> panel) override { window_.show(std::move(panel)); }

    void press(const oribund::Glob& glob, const XY& at, oribund::MouseButton button, unsigned modifiers) override
    {
        const bool right = button == oribund::MouseButton::Right;
        window_.press(glob, toQt(at), right ? Qt::RightButton : Qt::LeftButton, modifiersOf(modifiers));
    }

    void moveTo(const XY& at, unsigned modifiers) override { window_.moveTo(toQt(at), modifiersOf(modifiers)); }

    void release(const XY& at) override { window_.release(toQt(at)); }

    void pressAgain(const oribund::Glob& glob, const XY& at) override { window_.pressAgain(glob, toQt(at)); }

    void wheel(const oribund::Glob& glob, const XY& at, double notches) override
    {
        window_.wheel(glob, toQt(at), static_cast<int>(120 * notches));
    }

    void key(oribund::Key key, unsigned modifiers) override
    {
        using oribund::Key;
        static const std::map<Key, Qt::Key> keys{{Key::Enter, Qt::Key_Return}, {Key::Escape, Qt::Key_Escape},
                                                 {Key::Right, Qt::Key_Right},  {Key::Delete, Qt::Key_Delete},
                                                 {Key::Up, Qt::Key_Up},        {Key::Down, Qt::Key_Down},
                                                 {Key::F2, Qt::Key_F2}};
        oribund::qt::test::Stage::key(keys.at(key), modifiersOf(modifiers));
    }

    void type(const char* text) override { oribund::qt::test::Stage::type(text); }

    oribund::Colour colourAt(oribund::Glob& glob, const XY& at) override
    {
        return fromQt(oribund::qt::test::Stage::picture(glob).pixelColor(toQt(at)));
    }

    void settle() override { oribund::qt::test::settle(); }

private:
    static Qt::KeyboardModifiers modifiersOf(unsigned modifiers)
    {
        Qt::KeyboardModifiers held;
        held.setFlag(Qt::ControlModifier, (modifiers & oribund::Event::kCtrl) != 0);
        held.setFlag(Qt::ShiftModifier, (modifiers & oribund::Event::kShift) != 0);
        held.setFlag(Qt::AltModifier, (modifiers & oribund::Event::kAlt) != 0);
        return held;
    }

    oribund::qt::test::Stage window_{400, 400};
};

} // namespace workbench::scenes
