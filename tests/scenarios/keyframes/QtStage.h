#pragma once

#include "skin/QtConversions.h"
#include "tests/scenarios/keyframes/Stage.h"
#include "tests/skin/SkinSupport.h"

#include <QPointer>
#include <QWheelEvent>

#include <map>
#include <utility>

namespace workbench::scenes
{

/** A window with the real skin; the mouse and the keys are Qt's. */
class QtStage final : public Stage
{
public:
    oribund::Canvas& canvas() override { return window_.view->canvas(); }

    void show(std::unique_ptr<oribund::StandardPanel> panel) override { window_.view->setPanel(std::move(panel)); }

    void press(const oribund::Glob& glob, const XY& at, oribund::MouseButton button, unsigned modifiers) override
    {
        pressed_ = QtPeer::widgetOf(glob);
        held_ = button == oribund::MouseButton::Right ? Qt::RightButton : Qt::LeftButton;
        QTest::mousePress(pressed_, held_, modifiersOf(modifiers), toQt(at));
    }

    void moveTo(const XY& at, unsigned modifiers) override
    {
        if (!pressed_)
            return;
        QMouseEvent event(QEvent::MouseMove, toQt(at), pressed_->mapToGlobal(toQt(at)), Qt::NoButton, held_,
                          modifiersOf(modifiers));
        QApplication::sendEvent(pressed_, &event);
    }

    void release(const XY& at) override
    {
        if (pressed_)
            QTest::mouseRelease(pressed_, held_, {}, toQt(at));
    }

    void pressAgain(const oribund::Glob& glob, const XY& at) override
    {
        const QPointer<QWidget> widget = QtPeer::widgetOf(glob);
        QTest::mouseDClick(widget, Qt::LeftButton, {}, toQt(at));
        if (widget)
            QTest::mouseRelease(widget, Qt::LeftButton, {}, toQt(at));
    }

    void wheel(const oribund::Glob& glob, const XY& at, double notches) override
    {
        QWidget* const widget = QtPeer::widgetOf(glob);
        const QPointF place = toQt(at);
        QWheelEvent event(place, widget->mapToGlobal(place), {}, {0, static_cast<int>(120 * notches)}, Qt::NoButton, {},
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(widget, &event);
    }

    void key(oribund::Key key, unsigned modifiers) override
    {
        using oribund::Key;
        static const std::map<Key, Qt::Key> keys{{Key::Enter, Qt::Key_Return}, {Key::Escape, Qt::Key_Escape},
                                                 {Key::Right, Qt::Key_Right},  {Key::Delete, Qt::Key_Delete},
                                                 {Key::Up, Qt::Key_Up},        {Key::Down, Qt::Key_Down},
                                                 {Key::F2, Qt::Key_F2}};
        QTest::keyClick(keyboard(), keys.at(key), modifiersOf(modifiers));
    }

    void type(const char* text) override
    {
        for (; *text; ++text)
            QTest::keyClick(keyboard(), *text);
    }

    oribund::Colour colourAt(oribund::Glob& glob, const XY& at) override
    {
        return fromQt(QtPeer::widgetOf(glob)->grab().toImage().pixelColor(toQt(at)));
    }

    void settle() override { test::settle(); }

private:
    static Qt::KeyboardModifiers modifiersOf(unsigned modifiers)
    {
        Qt::KeyboardModifiers held;
        held.setFlag(Qt::ControlModifier, (modifiers & oribund::Event::kCtrl) != 0);
        held.setFlag(Qt::ShiftModifier, (modifiers & oribund::Event::kShift) != 0);
        held.setFlag(Qt::AltModifier, (modifiers & oribund::Event::kAlt) != 0);
        return held;
    }

    QWidget* keyboard() const
    {
        QWidget* const focused = QApplication::focusWidget();
        return focused ? focused : window_.view;
    }

    test::Stage window_{400, 400};
    QPointer<QWidget> pressed_;
    Qt::MouseButton held_ = Qt::NoButton;
};

} // namespace workbench::scenes
