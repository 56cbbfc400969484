#include "skin/SkinApplication.h"

#include "skin/theme/DarkTheme.h"

#include <clocale>

namespace oribund::qt
{

SkinApplication::SkinApplication(int& argc, char** argv)
    : QApplication(argc, argv)
{
    // QApplication takes all categories from the environment.
    std::setlocale(LC_NUMERIC, "C");
    DarkTheme::apply(*this);
}

} // namespace oribund::qt
