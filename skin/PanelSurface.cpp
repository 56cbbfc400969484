#include "skin/PanelSurface.h"

#include "skin/ColourChooser.h"
#include "skin/MenuPopup.h"
#include "skin/QPainterRenderer.h"
#include "skin/QtConversions.h"
#include "skin/TextEditor.h"

#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/EventRouter.h"
#include "oribund/host/toolkit/core/Glob.h"
#include "oribund/host/toolkit/core/GlobChange.h"
#include "oribund/host/toolkit/entries/TextBox.h"

#include <QApplication>
#include <QFocusEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QToolTip>

#include <utility>

namespace oribund::qt
{

using oribund::EventRouter;
using oribund::Glob;

PanelSurface::PanelSurface(QWidget* parent)
    : QWidget(parent)
    , canvas_({0, 0}, this)
{
    setMouseTracking(true);
    setFocusPolicy(Qt::TabFocus); // on a press the library decides
    setContextMenuPolicy(Qt::PreventContextMenu);
    setAutoFillBackground(true);
}

PanelSurface::~PanelSurface()
{
    takePanel().reset(); // it tells this of its end
}

// The panel

bool PanelSurface::setPanel(std::unique_ptr<Glob> panel, Fits fits)
{
    takePanel().reset();
    if (!panel)
        return true;
    if (panel->canvas() != &canvas_)
        return false;
    panel_ = std::move(panel);
    fits_ = fits;
    panel_->setPosition({0, 0});
    panel_->open();
    fitPanel();
    updateGeometry();
    return true;
}

std::unique_ptr<Glob> PanelSurface::takePanel()
{
    std::unique_ptr<Glob> taken = std::move(panel_);
    if (taken) {
        taken->close();
        followGlobs();
    }
    return taken;
}

PanelSurface* PanelSurface::showing(const Glob& glob)
{
    const oribund::Canvas* canvas = glob.isOpen() ? glob.canvas() : nullptr;
    return canvas ? dynamic_cast<PanelSurface*>(canvas->skin()) : nullptr;
}

QRect PanelSurface::placeOf(const Glob& glob)
{
    return {toQt(glob.toCanvas({})), QSize(glob.getWidth(), glob.getHeight())};
}

TextEditor* PanelSurface::editor() const
{
    return editor_;
}

EventRouter* PanelSurface::router() const
{
    return EventRouter::find(&canvas_);
}

void PanelSurface::resizeEvent(QResizeEvent*)
{
    canvas_.setSize({width(), height()});
    fitPanel();
}

void PanelSurface::fitPanel()
{
    if (panel_)
        panel_->resize(width(), fits_ == Fits::Both ? height() : panel_->getHeight());
}

QSize PanelSurface::sizeHint() const
{
    const QSize least = minimumSizeHint();
    return panel_ ? placeOf(*panel_).size().expandedTo(least) : least;
}

QSize PanelSurface::minimumSizeHint() const
{
    return {8 * oribund::UifStd::getRowHeight(), oribund::UifStd::getControlHeight()};
}

void PanelSurface::paintEvent(QPaintEvent* event)
{
    canvas_.setScale(devicePixelRatioF());
    QPainter painter(this);
    painter.setClipRegion(event->region());
    QPainterRenderer renderer(painter);
    canvas_.draw(renderer);
}

// What the tree tells

void PanelSurface::regionChanged(const oribund::Kt::Box<int>& region)
{
    update(toQt(region));
    followSoon();
}

void PanelSurface::globChanged(Glob& glob, unsigned changes)
{
    if (editor_ && editor_->box() == &glob)
        editor_->refresh();
    if ((changes & oribund::GlobChange::kGeometry) != 0 && !glob.parent())
        updateGeometry();
    if ((changes & oribund::GlobChange::kCursor) != 0)
        showCursor();
    accessibles_.tellChange(glob, changes);
    followSoon();
}

void PanelSurface::followSoon()
{
    // Whoever has just changed may be on its way out: it is looked at when that is over.
    if (followPending_ || children().isEmpty())
        return;
    followPending_ = true;
    QMetaObject::invokeMethod(
        this, [this] { followGlobs(); }, Qt::QueuedConnection);
}

void PanelSurface::followGlobs()
{
    followPending_ = false;
    if (editor_ && !editor_->follow())
        endEditor();
    const QList<QPointer<QObject>> all(children().begin(), children().end());
    for (const QPointer<QObject>& child : all) {
        if (auto* follower = dynamic_cast<GlobFollower*>(child.data()))
            follower->followGlob();
    }
}

// The keyboard

bool PanelSurface::hasKeyboard() const
{
    return hasFocus() || (editor_ && editor_->hasFocus());
}

void PanelSurface::focusChanged(Glob* owner)
{
    oribund::TextBox* const box = owner ? owner->textEntry() : nullptr;
    if (editor_ && (!box || editor_->box() != box))
        endEditor();
    if (!owner)
        return accessibles_.tellFocus();
    if (box && !editor_) {
        editor_ = new TextEditor(*box, *this);
        editor_->show();
    }
    // Others type as well: a table opens an entry.
    setAttribute(Qt::WA_InputMethodEnabled, !box && router()->usesKey(oribund::Event::character(L'x')));
    if (QWidget* const holder = editor_ ? static_cast<QWidget*>(editor_) : this; !holder->hasFocus())
        holder->setFocus(Qt::OtherFocusReason);
    accessibles_.tellFocus();
}

void PanelSurface::endEditor()
{
    const QPointer<TextEditor> ended = std::exchange(editor_, nullptr);
    editorPressed_ = false;
    if (!ended)
        return;
    // Otherwise Qt would hand the keyboard on to the next control of the window.
    if (ended->window()->focusWidget() == ended)
        setFocus(Qt::OtherFocusReason);
    ended->hide();
    ended->deleteLater(); // it may be in the middle of the event that led to this
}

bool PanelSurface::passFocusOn(bool forward)
{
    const QScopedValueRollback<bool> guard(leaving_, true);
    setFocus(Qt::OtherFocusReason);
    return QWidget::focusNextPrevChild(forward) && !hasFocus();
}

bool PanelSurface::focusNextPrevChild(bool next)
{
    // Tab goes to the panel as a key. Else it is Qt that looks for another control, as this one goes.
    return !(isVisible() && isEnabled()) && QWidget::focusNextPrevChild(next);
}

void PanelSurface::focusInEvent(QFocusEvent* event)
{
    const Qt::FocusReason reason = event->reason();
    if (leaving_ || !router())
        return;
    if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason)
        router()->moveFocus(reason == Qt::TabFocusReason);
    else if (resumed_ && (reason == Qt::ActiveWindowFocusReason || reason == Qt::MenuBarFocusReason))
        resumed_->takeFocus();
    resumed_.reset();
}

void PanelSurface::focusOutEvent(QFocusEvent* event)
{
    keyboardLeft(event->reason());
}

void PanelSurface::keyboardLeft(Qt::FocusReason reason)
{
    // A menu borrows the keyboard only.
    if (reason == Qt::PopupFocusReason || hasKeyboard() || !router())
        return;
    const oribund::GlobRef<Glob> owner(canvas_.focusOwner());
    router()->setFocus(nullptr);
    if (reason == Qt::ActiveWindowFocusReason || reason == Qt::MenuBarFocusReason)
        resumed_ = owner;
}

// What opens beside it

void PanelSurface::showHint(Glob& glob, const oribund::WString& text)
{
    if (text.empty())
        QToolTip::hideText();
    else if (isVisible())
        QToolTip::showText(mapToGlobal(toQt(glob.toCanvas({0, glob.getHeight() / 2}))), toTooltip(toQt(text)), this);
}

void PanelSurface::openMenu(oribund::MenuGlob& glob, const oribund::XY<int>& at)
{
    MenuPopup::open(glob, *this, mapToGlobal(toQt(glob.toCanvas(at))));
}

void PanelSurface::openColourChooser(oribund::ColourSwatch& swatch)
{
    ColourChooser::open(swatch, *this);
}

} // namespace oribund::qt
