#include "skin/PanelView.h"

#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/core/Glob.h"

#include <QKeyEvent>
#include <QScrollBar>

#include <algorithm>

namespace oribund::qt
{

using oribund::UifStd;

PanelView::PanelView(QWidget* parent)
    : QScrollArea(parent)
    , surface_(new PanelSurface)
{
    setFrameShape(QFrame::NoFrame);
    setWidget(surface_); // owns it from now on
    setFocusProxy(surface_);
    verticalScrollBar()->setSingleStep(UifStd::getRowHeight());
    surface_->panelResized = [this] { fit(); };
    surface_->controlFocused = [this](const QRect& place) {
        ensureVisible(place.left(), place.bottom(), 0, 0);
        ensureVisible(place.left(), place.top(), 0, 0);
    };
}

void PanelView::fit()
{
    const int height = panel() ? panel()->getHeight() : 0;
    surface_->resize(viewport()->width(), std::max(height, viewport()->height()));
    updateGeometry();
}

void PanelView::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    fit();
}

QSize PanelView::sizeHint() const
{
    return surface_->sizeHint().expandedTo(minimumSizeHint());
}

QSize PanelView::minimumSizeHint() const
{
    return {UifStd::getRowHeight() * 8, UifStd::getRowHeight() * 2};
}

void PanelView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown)
        QScrollArea::keyPressEvent(event);
    else
        event->ignore();
}

} // namespace oribund::qt
