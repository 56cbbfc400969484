#pragma once

#include "skin/Export.h"
#include "skin/access/AccessibleGlobs.h"

#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/toolkit/core/GlobRef.h"
#include "oribund/host/toolkit/core/Skin.h"

#include <QPointer>
#include <QWidget>

#include <memory>

namespace oribund
{
class EventRouter;
class Glob;
} // namespace oribund

namespace oribund::qt
{

class TextEditor;

/**
 * Shows one panel of the library in a Qt window. It paints the panel's tree, of which it is the one widget, and passes
 * mouse, wheel, keys and input methods to it; touch comes as mouse. It is one stop of the window's Tab order, inside
 * which Tab follows the panel's own. A key that no control has a use for goes on to the parent, and to the window's
 * shortcuts before. Needs a QApplication with the dark theme.
 *
 * The panel may be replaced or destroyed at any time, also from within what it does; the surface itself is to be
 * deleted with deleteLater() there.
 */
class ORIBUND_QT_API PanelSurface final : public QWidget, public oribund::Skin
{
public:
    explicit PanelSurface(QWidget* parent = nullptr);
    ~PanelSurface() override;

    /** What a panel for this surface is to be made for. */
    oribund::Canvas& canvas() { return canvas_; }

    /** What of its own size the surface gives the panel. */
    enum class Fits { Width, Both };

    /**
     * Shows a panel, or with null nothing, and destroys the last one. False when it was made for another canvas: it is
     * not shown then, and gone.
     */
    bool setPanel(std::unique_ptr<oribund::Glob> panel, Fits fits = Fits::Width);

    /** Null when there is none. */
    oribund::Glob* panel() const { return panel_.get(); }

    /** The panel, taken off the surface. */
    std::unique_ptr<oribund::Glob> takePanel();

    /** The native editor over the text entry that has the keyboard; null for none. */
    TextEditor* editor() const;

    AccessibleGlobs& accessibles() { return accessibles_; }

    /** The surface that shows a glob; null when none does. */
    static PanelSurface* showing(const oribund::Glob& glob);

    /** Where a glob of the panel stands. */
    static QRect placeOf(const oribund::Glob& glob);

    // For the editor

    /** The keyboard has left the surface or its editor. */
    void keyboardLeft(Qt::FocusReason reason);

    /** The size of the panel. */
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void leaveEvent(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void regionChanged(const oribund::Kt::Box<int>& region) override;
    void globChanged(oribund::Glob& glob, unsigned changes) override;
    void focusChanged(oribund::Glob* owner) override;
    bool passFocusOn(bool forward) override;
    void showHint(oribund::Glob& glob, const oribund::WString& text) override;
    void openMenu(oribund::MenuGlob& glob, const oribund::XY<int>& at) override;
    void openColourChooser(oribund::ColourSwatch& swatch) override;

    oribund::EventRouter* router() const;
    void fitPanel();
    bool hasKeyboard() const;
    void endEditor();
    void followGlobs();
    void followSoon();
    void pass(QMouseEvent& event);
    void passPress(QMouseEvent& event);
    void passToEditor(const QMouseEvent& event);
    void endLostDrag(Qt::MouseButtons held);
    void showCursor();
    bool showTooltip(const QPoint& at, const QPoint& onScreen);

    oribund::Canvas canvas_;
    AccessibleGlobs accessibles_{*this};
    std::unique_ptr<oribund::Glob> panel_;
    QPointer<TextEditor> editor_;
    oribund::GlobRef<oribund::Glob> resumed_; ///< gets the keyboard again when the window does
    QPoint pointer_;
    Fits fits_ = Fits::Width;
    bool editorPressed_ = false; ///< the press that opened the editor goes on in it
    bool leaving_ = false;
    bool followPending_ = false;
};

} // namespace oribund::qt
