#pragma once

#include "skin/Export.h"

#include <QApplication>

namespace oribund::qt
{

/**
 * The QApplication of a program that shows panels: with the dark theme, and with numbers that are read and written
 * with a point whatever the language of the desktop, on which the media engine relies.
 */
class ORIBUND_QT_API SkinApplication : public QApplication
{
public:
    /** As QApplication's: `argc` must outlive it. */
    SkinApplication(int& argc, char** argv);
};

} // namespace oribund::qt
