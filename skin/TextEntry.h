#pragma once

#include <QLineEdit>

namespace oribund
{
class TextBox;
}

namespace workbench
{

/**
 * The native widget of a text box: what the user does goes to the box, the work on the text itself is Qt's. Its peer
 * detaches it when the box goes; it then does nothing until Qt deletes it.
 */
class TextEntry final : public QLineEdit
{
public:
    TextEntry(oribund::TextBox& box, QWidget& parent);

    /** The box must not be called any more. */
    void detach() { box_ = nullptr; }

    /** Null after detach(). */
    oribund::TextBox* box() const { return box_; }

    /** Says at once, beside the entry, what is wrong with its text; or takes that away. */
    void showProblem();

    /** What the mouse does here now: the box's own drags, or carets and selections. */
    void followMouseUse();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    bool claims(const QKeyEvent& event) const;
    bool passPress(QMouseEvent& event);

    oribund::TextBox* box_;
    bool passesMouse_ = false; ///< from a press that is the box's up to its release
    bool selectOnRelease_ = false;
};

} // namespace workbench
