#pragma once

#include "oribund/host/toolkit/core/Skin.h"

class QWidget;

namespace workbench
{

/**
 * Shows globs with Qt: text entries as QLineEdit, tables as QTableView, menus as QMenu, colours in a QColorDialog; all
 * other globs draw themselves onto a widget of their own. Needs a QApplication with the dark theme. One for each
 * canvas.
 */
class QtSkin final : public oribund::Skin
{
public:
    /** The widgets of panels are made inside `surface`, which must outlive what is open on the canvas. */
    explicit QtSkin(QWidget& surface);

    std::unique_ptr<oribund::GlobPeer> makePeer(oribund::Label& glob) override;
    std::unique_ptr<oribund::GlobPeer> makePeer(oribund::Button& glob) override;
    std::unique_ptr<oribund::GlobPeer> makePeer(oribund::Checkbox& glob) override;
    std::unique_ptr<oribund::GlobPeer> makePeer(oribund::Slider& glob) override;
    std::unique_ptr<oribund::GlobPeer> makePeer(oribund::TextBox& glob) override;
    std::unique_ptr<oribund::GlobPeer> makePeer(oribund::DropDownMenuButton& glob) override;
    std::unique_ptr<oribund::GlobPeer> makePeer(oribund::TableWidget& glob) override;
    std::unique_ptr<oribund::GlobPeer> makePaintPeer(oribund::Glob& glob) override;
    std::unique_ptr<oribund::GlobPeer> makeContainerPeer(oribund::Glob& glob) override;
    void openMenu(oribund::MenuGlob& glob, const oribund::XY<int>& at) override;
    void openColourChooser(oribund::ColourSwatch& swatch) override;

private:
    QWidget& parentFor(const oribund::Glob& glob) const;

    QWidget& surface_;
};

} // namespace workbench
