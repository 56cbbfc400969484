#pragma once

#include "skin/PanelSurface.h"
#include "skin/TextEditor.h"
#include "tests/skin/Hand.h"

#include "oribund/host/toolkit/entries/TextBox.h"
#include "oribund/host/toolkit/layout/StandardPanel.h"

#include <memory>

namespace oribund::qt::test
{

/** A window with a panel, in which widgets stand where a test puts them, and a user. */
class Stage : public Hand
{
public:
    explicit Stage(int width = 400, int height = 300)
    {
        surface = new PanelSurface(&window);
        surface->setGeometry(0, 0, width, height);
        window.resize(width, height);
        show(std::make_unique<oribund::StandardPanel>(oribund::GlobCreationInfo(
            static_cast<unsigned short>(width), static_cast<unsigned short>(height), &surface->canvas())));
        window.show();
        activate();
    }

    void show(std::unique_ptr<oribund::StandardPanel> panel) { surface->setPanel(std::move(panel)); }

    /** Gives the window the keyboard; also after a menu, which takes it along on a screen without a window manager. */
    void activate()
    {
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window))
            throw std::runtime_error("the window does not become active");
    }

    oribund::StandardPanel& panel() { return static_cast<oribund::StandardPanel&>(*surface->panel()); }

    template <class Widget>
    Widget* add(const typename Widget::InitArgs& args, int x, int y)
    {
        return panel().addWidget(std::make_unique<Widget>(args), oribund::Glob::UserTopLeft(x, y));
    }

    template <class Widget>
    Widget* add(int x, int y)
    {
        return add<Widget>(typename Widget::InitArgs(), x, y);
    }

    /** The native editor that has the keyboard, for the library and for Qt; null for none. */
    TextEditor* editor() const
    {
        TextEditor* const editor = surface->editor();
        return editor && editor->hasFocus() && editor->box() == surface->canvas().focusOwner() ? editor : nullptr;
    }

    /** What has the keyboard, for the library and for Qt; null when they do not agree. */
    oribund::Glob* focused() const
    {
        oribund::Glob* const owner = surface->canvas().focusOwner();
        const bool types = owner && owner->textEntry();
        return owner && (types ? editor() != nullptr : surface->hasFocus()) ? owner : nullptr;
    }

    QWidget window;
    PanelSurface* surface;
};

/** Counts what comes to an object. */
class EventCount : public QObject
{
public:
    EventCount(QObject& object, QEvent::Type type)
        : type_(type)
    {
        object.installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        seen += event->type() == type_;
        return false;
    }

    int seen = 0;

private:
    QEvent::Type type_;
};

/** Lets what was put off happen, deletions included. */
inline void settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace oribund::qt::test
