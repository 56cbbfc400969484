#pragma once

#include <QWidget>

namespace oribund
{
class Event;
class Glob;
} // namespace oribund

namespace workbench
{

/**
 * The native widget of a glob that draws itself: paints it and passes mouse and keys on to it. The surfaces of the
 * globs in it stand inside. Its peer detaches it when the glob goes; it then does nothing until Qt deletes it.
 */
class GlobSurface final : public QWidget
{
public:
    GlobSurface(oribund::Glob& glob, QWidget& parent);

    /** The glob must not be called any more. */
    void detach();

    /** Null after detach(). */
    oribund::Glob* glob() const { return glob_; }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void leaveEvent(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void passMouse(QMouseEvent& event);
    void passKey(QKeyEvent& event);
    void endLostDrag(Qt::MouseButtons held);
    void showCursorAt(const oribund::Glob& glob, const QPoint& at);

    oribund::Glob* glob_;
};

} // namespace workbench
