#pragma once

#include "skin/Export.h"

#include "oribund/host/base/Box.h"
#include "oribund/host/base/Colour.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/UIString.h"
#include "oribund/host/base/XY.h"

#include <QColor>
#include <QPoint>
#include <QRect>
#include <QString>

class QFont;

namespace oribund
{
class Palette;

namespace Glib
{
struct FontDesc;
}
} // namespace oribund

class QPalette;

/** The library's plain values as Qt's, and back. */
namespace oribund::qt
{

ORIBUND_QT_API QColor toQt(const oribund::Colour& colour);
ORIBUND_QT_API oribund::Colour fromQt(const QColor& colour);

ORIBUND_QT_API QString toQt(const oribund::WString& text);
ORIBUND_QT_API QString toQt(const oribund::String& utf8);
ORIBUND_QT_API oribund::WString fromQt(const QString& text);

/** As the user reads it, placeholders replaced. */
ORIBUND_QT_API QString toDisplay(const oribund::UIString& text);

/** As it stands, whatever is in it, for where Qt would take it for a formatted text. */
ORIBUND_QT_API QString toTooltip(const QString& text);

/** As the user reads it, for where Qt takes an ampersand as the mark of a mnemonic. */
ORIBUND_QT_API QString toMenuText(const oribund::UIString& text);

inline QPoint toQt(const oribund::XY<int>& p)
{
    return {p.x, p.y};
}

inline oribund::XY<int> fromQt(const QPoint& p)
{
    return {p.x(), p.y()};
}

inline QPointF toQt(const oribund::XY<double>& p)
{
    return {p.x, p.y};
}

inline QRect toQt(const oribund::Kt::Box<int>& box)
{
    return {box.left, box.top, box.width(), box.height()};
}

inline QRectF toQt(const oribund::Kt::Box<double>& box)
{
    return {box.left, box.top, box.width(), box.height()};
}

inline oribund::Kt::Box<double> fromQt(const QRectF& rect)
{
    return oribund::Kt::Box<double>::fromSize({rect.x(), rect.y()}, {rect.width(), rect.height()});
}

inline oribund::Kt::Box<int> fromQt(const QRect& rect)
{
    return oribund::Kt::Box<int>::fromSize({rect.x(), rect.y()}, {rect.width(), rect.height()});
}

/** The interface font of the application in the size and style that are asked for. */
ORIBUND_QT_API QFont toQt(const oribund::Glib::FontDesc& font);

/** With the colours for disabled controls worked out. */
ORIBUND_QT_API QPalette toQt(const oribund::Palette& palette);

} // namespace oribund::qt
