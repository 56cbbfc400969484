#pragma once

#include "skin/Export.h"

#include <QPalette>
#include <QString>

class QApplication;

namespace oribund
{
class ColourScheme;
}

namespace oribund::qt
{

/**
 * Makes all native widgets look as the panels do. Colours and sizes come from the library's standard look (UifStd),
 * which is the only place where they are written down.
 */
class ORIBUND_QT_API DarkTheme
{
public:
    /**
     * Sets style, font, palette and style sheet of the application, and the library's metrics and text measurer from
     * its font. To be called once, before the first panel or window is made.
     */
    static void apply(QApplication& application);

    static QPalette palette(const oribund::ColourScheme& scheme);
    static QString styleSheet(const oribund::ColourScheme& scheme);
};

} // namespace oribund::qt
