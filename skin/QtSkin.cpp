#include "skin/QtSkin.h"

#include "skin/ColourChooser.h"
#include "skin/GlobAccessible.h"
#include "skin/MenuPopup.h"
#include "skin/QtPeer.h"
#include "skin/SurfacePeer.h"
#include "skin/TablePeer.h"
#include "skin/TextBoxPeer.h"

#include "oribund/host/toolkit/entries/TextBox.h"
#include "oribund/host/toolkit/lists/TableWidget.h"
#include "oribund/host/toolkit/menus/DropDownMenuButton.h"
#include "oribund/host/toolkit/widgets/Button.h"
#include "oribund/host/toolkit/widgets/Checkbox.h"
#include "oribund/host/toolkit/widgets/ColourSwatch.h"
#include "oribund/host/toolkit/widgets/Label.h"
#include "oribund/host/toolkit/widgets/Slider.h"

namespace workbench
{

using oribund::GlobPeer;

namespace
{

template <class G>
std::unique_ptr<GlobPeer> paint(G& glob, QWidget& parent)
{
    return std::make_unique<SurfacePeer>(glob, parent);
}

} // namespace

QtSkin::QtSkin(QWidget& surface)
    : surface_(surface)
{
    installGlobAccessibility();
}

QWidget& QtSkin::parentFor(const oribund::Glob& glob) const
{
    QWidget* around = QtPeer::widgetAround(glob);
    return around ? *around : surface_;
}

std::unique_ptr<GlobPeer> QtSkin::makePeer(oribund::Label& glob)
{
    return paint(glob, parentFor(glob));
}

std::unique_ptr<GlobPeer> QtSkin::makePeer(oribund::Button& glob)
{
    return paint(glob, parentFor(glob));
}

std::unique_ptr<GlobPeer> QtSkin::makePeer(oribund::Checkbox& glob)
{
    return paint(glob, parentFor(glob));
}

std::unique_ptr<GlobPeer> QtSkin::makePeer(oribund::Slider& glob)
{
    return paint(glob, parentFor(glob));
}

std::unique_ptr<GlobPeer> QtSkin::makePeer(oribund::TextBox& glob)
{
    return std::make_unique<TextBoxPeer>(glob, parentFor(glob));
}

std::unique_ptr<GlobPeer> QtSkin::makePeer(oribund::DropDownMenuButton& glob)
{
    return paint(glob, parentFor(glob));
}

std::unique_ptr<GlobPeer> QtSkin::makePeer(oribund::TableWidget& glob)
{
    return std::make_unique<TablePeer>(glob, parentFor(glob));
}

std::unique_ptr<GlobPeer> QtSkin::makePaintPeer(oribund::Glob& glob)
{
    return paint(glob, parentFor(glob));
}

std::unique_ptr<GlobPeer> QtSkin::makeContainerPeer(oribund::Glob& glob)
{
    return paint(glob, parentFor(glob));
}

void QtSkin::openMenu(oribund::MenuGlob& glob, const oribund::XY<int>& at)
{
    QWidget* widget = QtPeer::widgetOf(glob);
    MenuPopup::open(glob, widget ? *widget : surface_, at);
}

void QtSkin::openColourChooser(oribund::ColourSwatch& swatch)
{
    QWidget* widget = QtPeer::widgetOf(swatch);
    ColourChooser::open(swatch, widget ? *widget : surface_);
}

} // namespace workbench
