#pragma once

#include "skin/PanelView.h"
#include "skin/QtPeer.h"

#include "oribund/host/toolkit/layout/StandardPanel.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QTest>

#include <memory>
#include <stdexcept>

namespace workbench::test
{

/** A window with a panel, in which widgets stand where a test puts them. */
class Stage
{
public:
    explicit Stage(int width = 400, int height = 300)
    {
        view = new PanelView(&window);
        view->setGeometry(0, 0, width, height);
        window.resize(width, height);
        view->setPanel(std::make_unique<oribund::StandardPanel>(oribund::GlobCreationInfo(
            static_cast<unsigned short>(width), static_cast<unsigned short>(height), &view->canvas())));
        window.show();
        activate();
    }

    /** Gives the window the keyboard; also after a menu, which takes it along on a screen without a window manager. */
    void activate()
    {
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window))
            throw std::runtime_error("the window does not become active");
    }

    oribund::StandardPanel& panel() { return static_cast<oribund::StandardPanel&>(*view->panel()); }

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

    static QWidget* nativeOf(const oribund::Glob& glob) { return QtPeer::widgetOf(glob); }

    /** What has the keyboard, for the library and for Qt; null when they do not agree. */
    oribund::Glob* focused()
    {
        oribund::Glob* owner = view->canvas().focusOwner();
        return owner && nativeOf(*owner) == QApplication::focusWidget() ? owner : nullptr;
    }

    QWidget window;
    PanelView* view;
};

/** Saves a picture for a person to look at, where SKIN_PICTURES names a folder. */
inline void keepPicture(const QImage& picture, const QString& name)
{
    if (const QString folder = qEnvironmentVariable("SKIN_PICTURES"); !folder.isEmpty() && QDir().mkpath(folder))
        picture.save(folder + '/' + name + ".png");
}

/** Lets what was put off happen, deletions included. */
inline void settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace workbench::test
