#pragma once

#include "skin/PanelSurface.h"
#include "skin/QtConversions.h"

#include "oribund/host/toolkit/core/Glob.h"

#include <QApplication>
#include <QImage>
#include <QPointer>
#include <QTest>
#include <QWheelEvent>

#include <stdexcept>

namespace oribund::qt::test
{

/** A user's mouse and keys, on the globs of a window. Places are those of the glob that was named last. */
class Hand
{
public:
    static QPoint middleOf(const oribund::Glob& glob) { return {glob.getWidth() / 2, glob.getHeight() / 2}; }

    void press(const oribund::Glob& glob, const QPoint& at, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = {})
    {
        aim(glob, at);
        held_ = button;
        QTest::mousePress(target_, button, modifiers, local(at));
    }

    /** What was pressed may be gone: places stay those of where it was. */
    void moveTo(const QPoint& at, Qt::KeyboardModifiers modifiers = {})
    {
        if (!target_)
            return;
        QMouseEvent event(QEvent::MouseMove, local(at), origin_ + at, Qt::NoButton, held_, modifiers);
        QApplication::sendEvent(target_, &event);
    }

    void release(const QPoint& at)
    {
        const Qt::MouseButton button = std::exchange(held_, Qt::NoButton);
        if (target_)
            QTest::mouseRelease(target_, button, {}, local(at));
    }

    void click(const oribund::Glob& glob, const QPoint& at, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = {})
    {
        press(glob, at, button, modifiers);
        release(at);
    }

    void click(const oribund::Glob& glob) { click(glob, middleOf(glob)); }

    /** The second press of two, and its release. */
    void pressAgain(const oribund::Glob& glob, const QPoint& at)
    {
        aim(glob, at);
        held_ = Qt::LeftButton;
        QTest::mouseDClick(target_, Qt::LeftButton, {}, local(at));
        release(at);
    }

    void doubleClick(const oribund::Glob& glob, const QPoint& at)
    {
        click(glob, at);
        pressAgain(glob, at);
    }

    void hover(const oribund::Glob& glob, const QPoint& at)
    {
        aim(glob, at);
        held_ = Qt::NoButton;
        moveTo(at);
    }

    void wheel(const oribund::Glob& glob, const QPoint& at, int turn)
    {
        aim(glob, at);
        QWheelEvent event(QPointF(local(at)), QPointF(origin_ + at), {}, {0, turn}, Qt::NoButton, {}, Qt::NoScrollPhase,
                          false);
        QSpontaneKeyEvent::setSpontaneous(&event); // no other wheel goes on to parents
        qApp->notify(target_, &event);
    }

    /** To whatever has the keyboard. */
    static void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(keyboard(), key, modifiers); }

    static void type(const char* text)
    {
        for (; *text; ++text)
            QTest::keyClick(keyboard(), *text);
    }

    static QWidget* keyboard()
    {
        QWidget* const focused = QApplication::focusWidget();
        if (!focused)
            throw std::runtime_error("no widget has the keyboard");
        return focused;
    }

    static QImage picture(const oribund::Glob& glob)
    {
        PanelSurface* const surface = PanelSurface::showing(glob);
        return surface->grab(PanelSurface::placeOf(glob)).toImage();
    }

private:
    /** The widget that Qt would give the mouse to at this place. */
    void aim(const oribund::Glob& glob, const QPoint& at)
    {
        PanelSurface* const surface = PanelSurface::showing(glob);
        if (!surface)
            throw std::runtime_error("the glob is not shown");
        const QPoint corner = PanelSurface::placeOf(glob).topLeft();
        origin_ = surface->mapToGlobal(corner);
        QWidget* const child = surface->childAt(corner + at);
        target_ = child ? child : surface;
    }

    QPoint local(const QPoint& at) const { return target_->mapFromGlobal(origin_ + at); }

    QPointer<QWidget> target_;
    QPoint origin_; ///< of the glob, on the screen
    Qt::MouseButton held_ = Qt::NoButton;
};

} // namespace oribund::qt::test
