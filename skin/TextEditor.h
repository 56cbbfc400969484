#pragma once

#include "skin/Export.h"

#include "oribund/host/toolkit/core/GlobRef.h"

#include <QLineEdit>

namespace oribund
{
class TextBox;
}

namespace oribund::qt
{

class PanelSurface;

/**
 * The native editor over the text box that has the keyboard: caret, selection, clipboard, undo of typing and input
 * methods are Qt's, all else is the box's. It stands within the frame that the box draws, with the text at the same
 * place. A child of its surface, which makes and ends it.
 */
class ORIBUND_QT_API TextEditor final : public QLineEdit
{
public:
    TextEditor(oribund::TextBox& box, PanelSurface& surface);

    /** Null when it is gone. */
    oribund::TextBox* box() const { return box_.get(); }

    /** Brings text, colours and state in step with the box. */
    void refresh();

    /** Goes where the box is now. False when that is gone, or has lost the keyboard. */
    bool follow();

    /** The menu of texts, with its top left at a point of the screen. */
    void openTextMenu(const QPoint& at);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void refreshText();

    oribund::GlobRef<oribund::TextBox> box_;
    PanelSurface& surface_;
    bool selectOnRelease_ = false;
    bool telling_ = false; ///< the box is just told what was typed here
};

} // namespace oribund::qt
