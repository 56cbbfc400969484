#pragma once

#include "oribund/host/toolkit/core/GlobPeer.h"

#include <QPointer>
#include <QWidget>

namespace oribund
{
class Glob;
}

namespace workbench
{

/**
 * A glob's native widget, kept in step with what all globs have: place, visibility, cursor, focus, accessible name. A
 * widget of Qt's may go before its peer, with its window; the peer then does nothing any more.
 */
class QtPeer : public oribund::GlobPeer
{
public:
    ~QtPeer() override;

    void refresh(unsigned changes) override;

    /** Null when it has gone with its window. */
    QWidget* widget() const { return widget_; }

    /** The widget of a glob that is shown by a skin of this kind; null for any other. */
    static QWidget* widgetOf(const oribund::Glob& glob);

    /** The nearest ancestor's widget, in which a glob's own one stands; null when there is none. */
    static QWidget* widgetAround(const oribund::Glob& glob);

protected:
    /** The widget is a child of another one, and is deleted here unless that has been deleted before. */
    QtPeer(oribund::Glob& glob, QWidget* widget);

    oribund::Glob& glob() const { return glob_; }

    /** Where the widget stands in that of the parent. */
    virtual QRect widgetGeometry() const;

private:
    void refreshFocus();

    oribund::Glob& glob_;
    QPointer<QWidget> widget_;
};

} // namespace workbench
