#pragma once

#include "oribund/host/base/Box.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/XY.h"

namespace oribund
{

class ColourSwatch;
class Glob;
class MenuGlob;

/**
 * What a canvas needs of the toolkit that it is shown with: one native surface that draws it and injects what the user
 * does, and over it what no panel library should write again (text editor, menus, colour chooser, screen readers). A
 * host implements it once; a canvas without one runs headless. All calls are on the user-interface thread; those that
 * tell of something come when it is so.
 *
 * The surface draws with Canvas::draw() and passes everything on with Canvas::inject(). Any such call may destroy
 * globs: what a skin keeps of one, it keeps as a GlobRef.
 */
class ORIBUND_API Skin
{
public:
    virtual ~Skin();

    /** The region, in coordinates of the canvas, is to be drawn again when there is time. */
    virtual void regionChanged(const Kt::Box<int>& region) = 0;

    /** Bits of GlobChange: what is another about a glob of an open tree. All bits for one that is new there. */
    virtual void globChanged(Glob& glob, unsigned changes) = 0;

    /**
     * The keyboard is with another glob, or with none. While it is with one that has a Glob::textEntry() a native
     * editor stands there: it takes the keys that TextBox::worksOnText() and tells TextBox::userEdit().
     */
    virtual void focusChanged(Glob* owner) = 0;

    /** Tab has passed the last control of the canvas, or the first: true when the keyboard has gone elsewhere. */
    virtual bool passFocusOn(bool forward) = 0;

    /** Shows a text beside a glob at once, or with none takes it away. */
    virtual void showHint(Glob& glob, const WString& text) = 0;

    /**
     * Shows the glob's menu with its top left at `at`, in the glob's coordinates. Ends in one call of
     * MenuGlob::userChooseMenuItem() or userCloseMenu(), at once or later, unless the glob goes before.
     */
    virtual void openMenu(MenuGlob& glob, const XY<int>& at) = 0;

    /** Lets the user choose a colour for the swatch; answers through the swatch's user...() methods. */
    virtual void openColourChooser(ColourSwatch& swatch) = 0;
};

} // namespace oribund
