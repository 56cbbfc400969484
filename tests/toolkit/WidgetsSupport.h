#pragma once

#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/canvas/RecordingRenderer.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/layout/StandardPanel.h"
#include "oribund/host/toolkit/values/ValAdaptorBase.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace oribund::test
{

/** Keeps a value, writes down what is asked of it, and tells its widgets when the value changes. */
template <class T>
class StoreAdaptor : public ValAdaptorBase<T>
{
public:
    explicit StoreAdaptor(T initial = {})
        : value(std::move(initial))
    {
    }

    T getDataValue() override { return value; }

    bool requestSetValue(const T& requested, ChangeKind kind) override
    {
        requests.emplace_back(requested, kind);
        if (onRequest)
            onRequest();
        const T stored = convert ? convert(requested) : requested;
        if (refuses)
            return false;
        if (!(stored == value)) {
            value = stored;
            this->forceWidgetUpdate(eRedrawFlag::Yes);
        }
        return true;
    }

    void handleSeriesEnd() override { ++seriesEnds; }

    bool cancelSeries() override
    {
        ++cancels;
        if (restoresTo)
            value = *restoresTo;
        return restoresTo.has_value();
    }

    bool takeBackSeries() override
    {
        ++takenBack;
        if (restoresTo)
            value = *restoresTo;
        return restoresTo.has_value();
    }

    /** The kinds of the requests so far, for example "SCC." for a series of three and a change on its own. */
    std::string kinds() const
    {
        std::string text;
        for (const auto& request : requests)
            text += request.second == ChangeKind::Start ? 'S' : request.second == ChangeKind::Single ? '.' : 'C';
        return text;
    }

    T value;
    bool refuses = false;
    std::function<T(const T&)> convert;
    std::function<void()> onRequest;
    std::optional<T> restoresTo;
    std::vector<std::pair<T, ChangeKind>> requests;
    int seriesEnds = 0;
    int cancels = 0;
    int takenBack = 0;
};

/** A canvas with an open panel, in which widgets stand where a test puts them. */
class Desk
{
public:
    Desk()
        : canvas({400, 300})
        , panel(std::make_unique<StandardPanel>(GlobCreationInfo(400, 300, &canvas)))
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

    void press(const XY<int>& at) { canvas.inject(Event::mousePress(at)); }

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
    std::unique_ptr<StandardPanel> panel;
};

} // namespace oribund::test
