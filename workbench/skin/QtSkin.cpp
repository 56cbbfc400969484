#include "workbench/skin/QtSkin.h"

#include "workbench/skin/ColourChooser.h"
#include "workbench/skin/GlobAccessible.h"
#include "workbench/skin/GlobTraits.h"
#include "workbench/skin/MenuPopup.h"
#include "workbench/skin/QtPeer.h"
#include "workbench/skin/SurfacePeer.h"
#include "workbench/skin/TablePeer.h"
#include "workbench/skin/TextBoxPeer.h"

#include "oribund/host/toolkit/Button.h"
#include "oribund/host/toolkit/Checkbox.h"
#include "oribund/host/toolkit/ColourSwatch.h"
#include "oribund/host/toolkit/DropDownMenuButton.h"
#include "oribund/host/toolkit/Label.h"
#include "oribund/host/toolkit/Slider.h"
#include "oribund/host/toolkit/TableWidget.h"
#include "oribund/host/toolkit/TextBox.h"

namespace workbench
{

using oribund::GlobPeer;

namespace
{

template <class G>
std::unique_ptr<GlobPeer> paint(G& glob, QWidget& parent)
{
    return std::make_unique<SurfacePeer>(glob, GlobTraits::of(glob), parent);
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
