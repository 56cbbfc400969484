#pragma once

#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/canvas/RecordingRenderer.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/layout/StandardPanel.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace oribund::test
{

/** A panel that keeps what it is sent, and leaves it to others. */
class OwnerPanel : public StandardPanel
{
public:
    using StandardPanel::StandardPanel;

    std::vector<String> messages;

protected:
    bool handleMessageEvent(const String& message, Glob*) override
    {
        messages.push_back(message);
        return false;
    }
};

/** A canvas with an open panel, in which widgets stand where a test puts them, and the user's mouse and keys. */
class Desk
{
public:
    explicit Desk(const XY<int>& size = {400, 300}, Skin* skin = nullptr)
        : canvas(size, skin)
        , panel(std::make_unique<OwnerPanel>(
              GlobCreationInfo(static_cast<unsigned short>(size.x), static_cast<unsigned short>(size.y), &canvas)))
    {
        panel->open();
    }

    template <class Widget>
    Widget* add(const typename Widget::InitArgs& args, int x = 0, int y = 0)
    {
        return panel->addWidget(std::make_unique<Widget>(args), Glob::UserTopLeft(x, y));
    }

    template <class Widget>
    Widget* add(int x = 0, int y = 0)
    {
        return add<Widget>(typename Widget::InitArgs(), x, y);
    }

    bool key(Key key, unsigned modifiers = 0) { return canvas.inject(Event::keyPress(key, modifiers)); }

    void type(const wchar_t* text)
    {
        for (; *text; ++text)
            canvas.inject(Event::character(*text));
    }

    void press(const XY<int>& at, unsigned modifiers = 0)
    {
        canvas.inject(Event::mousePress(at, MouseButton::Left, modifiers));
    }

    void drag(const XY<int>& to, unsigned modifiers = 0)
    {
        canvas.inject(Event::mouseMove(to, MouseButton::Left, modifiers));
    }

    void release(const XY<int>& at) { canvas.inject(Event::mouseRelease(at)); }

    void click(const XY<int>& at)
    {
        press(at);
        release(at);
    }

    /** The second press of two, and its release. */
    void pressAgain(const XY<int>& at)
    {
        canvas.inject(Event::mouseDoubleClick(at));
        release(at);
    }

    static RecordingRenderer drawn(Glob& glob)
    {
        RecordingRenderer renderer;
        glob.draw(renderer);
        return renderer;
    }

    static bool draws(Glob& glob, const Colour& colour)
    {
        const RecordingRenderer renderer = drawn(glob);
        const auto& all = renderer.primitives();
        return std::any_of(all.begin(), all.end(),
                           [&](const Primitive& p) { return p.colour == colour || p.outline == colour; });
    }

    Canvas canvas;
    std::unique_ptr<OwnerPanel> panel;
};

} // namespace oribund::test
