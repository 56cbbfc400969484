#include "skin/QtPeer.h"

#include "skin/PanelView.h"
#include "skin/QtConversions.h"

#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/toolkit/core/Glob.h"

#include <QAccessible>

namespace workbench
{

namespace Change = oribund::PeerChange;

QtPeer::QtPeer(oribund::Glob& glob, QWidget* widget)
    : glob_(glob)
    , widget_(widget)
{
    widget->setObjectName(toQt(glob.idString()));
}

QtPeer::~QtPeer()
{
    if (!widget_)
        return;
    // It may be in the middle of the event that led to this.
    widget_->hide();
    widget_->deleteLater();
}

QWidget* QtPeer::widgetOf(const oribund::Glob& glob)
{
    const auto* peer = dynamic_cast<const QtPeer*>(glob.peer());
    return peer ? peer->widget() : nullptr;
}

QWidget* QtPeer::widgetAround(const oribund::Glob& glob)
{
    for (const oribund::Glob* parent = glob.parent(); parent; parent = parent->parent()) {
        if (QWidget* widget = widgetOf(*parent))
            return widget;
    }
    return nullptr;
}

QRect QtPeer::widgetGeometry() const
{
    // A parent that is not shown by itself adds to the offset.
    oribund::XY<int> position = glob_.getPosition();
    for (const oribund::Glob* parent = glob_.parent(); parent && !widgetOf(*parent); parent = parent->parent())
        position += parent->getPosition();
    return {toQt(position), QSize(glob_.getWidth(), glob_.getHeight())};
}

void QtPeer::refresh(unsigned changes)
{
    if (!widget_)
        return;
    if (changes & Change::kGeometry)
        widget_->setGeometry(widgetGeometry());
    if (changes & Change::kTooltip)
        widget_->setAccessibleName(toDisplay(glob_.accessibleName()));
    if (changes & Change::kVisible)
        widget_->setVisible(glob_.isVisible());
    if (changes & Change::kFocus)
        refreshFocus();
    if (changes & (Change::kContents | Change::kPalette | Change::kFont | Change::kEnabled | Change::kState))
        widget_->update();
}

void QtPeer::refreshFocus()
{
    const bool here = widget_->hasFocus();
    if (glob_.hasFocus() && !here) {
        widget_->setFocus(Qt::OtherFocusReason);
    } else if (here && !glob_.hasFocus() && !glob_.canvas()->focusOwner()) {
        // Nothing in the panel has the keyboard now, yet Tab is to go on from here.
        if (PanelView* view = PanelView::around(widget_))
            view->setFocus(Qt::OtherFocusReason);
        else
            widget_->clearFocus();
    }
}

} // namespace workbench
