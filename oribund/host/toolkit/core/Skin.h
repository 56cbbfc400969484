#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/XY.h"

#include <memory>

namespace oribund
{

class Button;
class Checkbox;
class ColourSwatch;
class DropDownMenuButton;
class Glob;
class GlobPeer;
class Label;
class MenuGlob;
class Slider;
class TableWidget;
class TextBox;

/**
 * Shows globs with native widgets. A host implements it once; a canvas without one runs headless.
 *
 * A glob asks for its peer, through Glob::makePeer(), when the tree that it is in is opened or when it is added to an
 * open one. Null is allowed: the glob is then not shown. A native widget that passes raw mouse and key events to its
 * glob does so with Glob::userEvent() and takes them as handled, since the glob has offered them to its parents.
 */
class ORIBUND_API Skin
{
public:
    virtual ~Skin();

    virtual std::unique_ptr<GlobPeer> makePeer(Label& glob) = 0;
    virtual std::unique_ptr<GlobPeer> makePeer(Button& glob) = 0;
    virtual std::unique_ptr<GlobPeer> makePeer(Checkbox& glob) = 0;
    virtual std::unique_ptr<GlobPeer> makePeer(Slider& glob) = 0;
    virtual std::unique_ptr<GlobPeer> makePeer(TextBox& glob) = 0;
    virtual std::unique_ptr<GlobPeer> makePeer(DropDownMenuButton& glob) = 0;
    virtual std::unique_ptr<GlobPeer> makePeer(TableWidget& glob) = 0;

    /** For a glob that draws itself: a surface painted by Glob::draw(), which passes on mouse and keys. */
    virtual std::unique_ptr<GlobPeer> makePaintPeer(Glob& glob) = 0;

    /** For a glob that others stand in: as a paint peer, with the peers of its children inside it. */
    virtual std::unique_ptr<GlobPeer> makeContainerPeer(Glob& glob) = 0;

    /**
     * Shows the glob's menu with its top left at `at`, in the glob's coordinates. Ends in one call of
     * MenuGlob::userChooseMenuItem() or userCloseMenu(), at once or later, unless the glob goes before.
     */
    virtual void openMenu(MenuGlob& glob, const XY<int>& at) = 0;

    /** Lets the user choose a colour for the swatch; answers through the swatch's user...() methods. */
    virtual void openColourChooser(ColourSwatch& swatch) = 0;
};

} // namespace oribund
