#pragma once

#include "tests/scenarios/keyframes/Stage.h"

#include "oribund/host/canvas/RecordingRenderer.h"

#include <utility>

namespace workbench::scenes
{

/** A canvas without a screen: events are injected, drawing is recorded. */
class HeadlessStage final : public Stage
{
public:
    oribund::Canvas& canvas() override { return canvas_; }

    void show(std::unique_ptr<oribund::StandardPanel> panel) override
    {
        panel_ = std::move(panel);
        if (panel_)
            panel_->open();
    }

    void press(const oribund::Glob& glob, const XY& at, oribund::MouseButton button, unsigned modifiers) override
    {
        origin_ = glob.toCanvas({0, 0});
        held_ = button;
        canvas_.inject(Event::mousePress(onCanvas(at), held_, modifiers));
    }

    void moveTo(const XY& at, unsigned modifiers) override
    {
        canvas_.inject(Event::mouseMove(onCanvas(at), held_, modifiers));
    }

    void release(const XY& at) override { canvas_.inject(Event::mouseRelease(onCanvas(at), held_)); }

    void pressAgain(const oribund::Glob& glob, const XY& at) override
    {
        canvas_.inject(Event::mouseDoubleClick(glob.toCanvas(at)));
        canvas_.inject(Event::mouseRelease(glob.toCanvas(at)));
    }

    void wheel(const oribund::Glob& glob, const XY& at, double notches) override
    {
        canvas_.inject(Event::mouseWheel(glob.toCanvas(at), notches));
    }

    void key(oribund::Key key, unsigned modifiers) override { canvas_.inject(Event::keyPress(key, modifiers)); }

    void type(const char* text) override
    {
        for (; *text; ++text)
            canvas_.inject(Event::character(static_cast<wchar_t>(*text)));
    }

    oribund::Colour colourAt(oribund::Glob& glob, const XY& at) override
    {
        oribund::RecordingRenderer renderer;
        glob.draw(renderer);
        oribund::Colour colour;
        for (const auto& drawn : renderer.ofKind(oribund::Primitive::Kind::Rect)) {
            const auto& box = drawn.box;
            if (box.left <= at.x && at.x < box.right && box.top <= at.y && at.y < box.bottom)
                colour = drawn.colour;
        }
        return colour;
    }

private:
    using Event = oribund::Event;

    XY onCanvas(const XY& at) const { return {origin_.x + at.x, origin_.y + at.y}; }

    oribund::Canvas canvas_{{400, 400}};
    std::unique_ptr<oribund::StandardPanel> panel_;
    XY origin_;
    oribund::MouseButton held_ = oribund::MouseButton::None;
};

} // namespace workbench::scenes
