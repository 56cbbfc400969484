#include "skin/PanelView.h"

#include "skin/EventTranslation.h"
#include "skin/QtPeer.h"

#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/core/EventRouter.h"
#include "oribund/host/toolkit/core/Glob.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>

namespace workbench
{

using oribund::EventRouter;
using oribund::UifStd;

PanelView::PanelView(QWidget* parent)
    : QScrollArea(parent)
    , contents_(new QWidget)
    , skin_(*contents_)
    , canvas_({0, 0}, &skin_)
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::TabFocus);
    setWidget(contents_); // owns it from now on
    verticalScrollBar()->setSingleStep(UifStd::getRowHeight());
    setBackgroundRole(QPalette::Window);
}

PanelView::~PanelView()
{
    if (QWidget* root = panel_ ? QtPeer::widgetOf(*panel_) : nullptr)
        root->removeEventFilter(this);
}

bool PanelView::setPanel(std::unique_ptr<oribund::Glob> panel)
{
    takePanel().reset();
    if (!panel)
        return true;
    if (panel->canvas() != &canvas_)
        return false;
    panel_ = std::move(panel);
    canvas_.setScale(devicePixelRatioF());
    panel_->setPosition({0, 0});
    panel_->open();
    if (QWidget* root = QtPeer::widgetOf(*panel_))
        root->installEventFilter(this);
    fitPanel();
    updateGeometry();
    return true;
}

std::unique_ptr<oribund::Glob> PanelView::takePanel()
{
    std::unique_ptr<oribund::Glob> taken = std::move(panel_);
    if (taken) {
        taken->close();
        fitContents();
    }
    return taken;
}

PanelView* PanelView::around(QWidget* widget)
{
    for (; widget; widget = widget->parentWidget()) {
        if (auto* view = dynamic_cast<PanelView*>(widget))
            return view;
    }
    return nullptr;
}

void PanelView::fitPanel()
{
    if (panel_ && !fitting_) {
        fitting_ = true;
        panel_->resize(viewport()->width(), panel_->getHeight());
        fitting_ = false;
    }
    fitContents();
}

void PanelView::fitContents()
{
    const QSize needed = panel_ ? QSize(panel_->getWidth(), panel_->getHeight()) : QSize(0, 0);
    const QSize size = needed.expandedTo(QSize(needed.width(), viewport()->height()));
    contents_->resize(size);
    canvas_.setSize({size.width(), size.height()});
}

bool PanelView::eventFilter(QObject* watched, QEvent* event)
{
    // The panel has grown or shrunk by itself, as groups do that are folded.
    if (event->type() == QEvent::Resize && panel_ && watched == QtPeer::widgetOf(*panel_)) {
        fitContents();
        updateGeometry();
    }
    return QScrollArea::eventFilter(watched, event);
}

void PanelView::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    fitPanel();
}

void PanelView::showEvent(QShowEvent* event)
{
    canvas_.setScale(devicePixelRatioF());
    QScrollArea::showEvent(event);
}

bool PanelView::event(QEvent* event)
{
    if (event->type() == QEvent::ScreenChangeInternal)
        canvas_.setScale(devicePixelRatioF());
    if (event->type() == QEvent::ShortcutOverride) {
        const EventRouter* router = EventRouter::find(&canvas_);
        if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape && router && router->grabOwner())
            event->accept();
    }
    return QScrollArea::event(event);
}

QSize PanelView::sizeHint() const
{
    const QSize least = minimumSizeHint();
    return panel_ ? QSize(panel_->getWidth(), panel_->getHeight()).expandedTo(least) : least;
}

QSize PanelView::minimumSizeHint() const
{
    return {UifStd::getRowHeight() * 8, UifStd::getRowHeight() * 2};
}

void PanelView::takeStrayKeys()
{
    if (!canvas_.focusOwner())
        setFocus(Qt::MouseFocusReason);
}

void PanelView::scrollByWheel(QWheelEvent& event)
{
    const QScrollBar& bar = *verticalScrollBar();
    if (bar.maximum() > bar.minimum())
        QScrollArea::wheelEvent(&event);
    else if (parentWidget())
        QCoreApplication::sendEvent(parentWidget(), &event);
    event.accept();
}

void PanelView::passUnusedKey(QKeyEvent& event)
{
    const bool scrolls = event.key() == Qt::Key_PageUp || event.key() == Qt::Key_PageDown;
    if (scrolls && event.type() == QEvent::KeyPress)
        QScrollArea::keyPressEvent(&event);
    else if (parentWidget())
        QCoreApplication::sendEvent(parentWidget(), &event);
    event.accept();
}

void PanelView::keyPressEvent(QKeyEvent* event)
{
    if (!canvas_.inject(toEvent(*event)))
        passUnusedKey(*event);
}

void PanelView::focusInEvent(QFocusEvent* event)
{
    QScrollArea::focusInEvent(event);
    EventRouter* router = EventRouter::find(&canvas_);
    if (!router || leaving_)
        return;
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason)
        router->moveFocus(event->reason() == Qt::TabFocusReason);
}

bool PanelView::focusNextPrevChild(bool next)
{
    return moveFocus(next);
}

bool PanelView::moveFocus(bool next)
{
    EventRouter* router = EventRouter::find(&canvas_);
    if (router && router->moveFocus(next, false))
        return true;
    return leave(next) || (router && router->moveFocus(next));
}

bool PanelView::leave(bool next)
{
    // The window's order goes on from the view, not from what stands in it.
    leaving_ = true;
    setFocus(Qt::OtherFocusReason);
    const bool left = QScrollArea::focusNextPrevChild(next) && !hasFocus();
    leaving_ = false;
    return left;
}

} // namespace workbench
