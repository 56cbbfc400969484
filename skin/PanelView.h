#pragma once

#include "skin/QtSkin.h"

#include "oribund/host/canvas/Canvas.h"

#include <QScrollArea>

#include <memory>

namespace oribund
{
class Glob;
}

namespace workbench
{

/**
 * Shows one panel of the library in a window: gives it its own width, scrolls it when it is too high, and is one stop
 * of the window's Tab order, inside which Tab follows the panel's own.
 *
 * The panel may be replaced or destroyed at any time, also from within what it does; the view itself is to be deleted
 * with deleteLater() there.
 */
class PanelView final : public QScrollArea
{
public:
    explicit PanelView(QWidget* parent = nullptr);
    ~PanelView() override;

    /** What a panel for this view is to be made for. */
    oribund::Canvas& canvas() { return canvas_; }

    /**
     * Shows a panel, or with null nothing, and destroys the last one. False when it was made for another canvas: it is
     * not shown then, and gone.
     */
    bool setPanel(std::unique_ptr<oribund::Glob> panel);

    /** Null when there is none. */
    oribund::Glob* panel() const { return panel_.get(); }

    /** The panel, taken off the view. */
    std::unique_ptr<oribund::Glob> takePanel();

    /** The view in which a widget stands; null when it stands in none. */
    static PanelView* around(QWidget* widget);

    // For the widgets of the panel

    /** Moves the keyboard to the panel's next or previous control and, past the last one, out of the view. */
    bool moveFocus(bool next);

    /** Takes the keyboard when no control of the panel has it: the keys of a drag, Escape above all, come here. */
    void takeStrayKeys();

    void scrollByWheel(QWheelEvent& event);

    /** A key that the panel has no use for: scrolls, or goes to what the view stands in. */
    void passUnusedKey(QKeyEvent& event);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void fitPanel();
    void fitContents();
    bool leave(bool next);

    // The panel goes first, then the canvas that it is on.
    QWidget* contents_;
    QtSkin skin_;
    oribund::Canvas canvas_;
    std::unique_ptr<oribund::Glob> panel_;
    bool fitting_ = false;
    bool leaving_ = false;
};

} // namespace workbench
