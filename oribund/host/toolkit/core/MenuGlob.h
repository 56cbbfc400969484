#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/toolkit/core/Glob.h"

#include <memory>

namespace oribund
{

class Menu;
struct MenuItem;

/** A glob with a context menu: the right mouse button and the menu key open it. */
class ORIBUND_API MenuGlob : public Glob
{
public:
    explicit MenuGlob(const GlobCreationInfo& info);
    ~MenuGlob() override;

    /** The menu as filled last; valid while it is open. */
    const Menu& menu() const;

    /**
     * Fills the menu and shows it with its top left at `at`; false when there is nothing in it. `event` is what asked
     * for it, or null. On a canvas without a skin the menu counts as open and waits for a user...() call.
     */
    bool openMenu(const XY<int>& at, const Event* event = nullptr);

    bool isMenuOpen() const { return menuOpen_; }

    bool usesKey(const Event& press) const override;

    /** The user has chosen an item of menu() or of a submenu. Closes the menu, then does what the item says. */
    void userChooseMenuItem(const MenuItem& item);

    /** The user has closed the menu without choosing. */
    void userCloseMenu();

protected:
    /** Whether the menu key has a menu to open here: for who overrides reviewMenu() to say. */
    virtual bool hasMenu() const;

    /** Fills menu(), which is empty before. `event` may be null. */
    virtual void reviewMenu(const Event* event);

    Menu& editMenu() { return *menu_; }

    bool handleMouseEvent(const Event& event) override;
    bool handleKeyEvent(const Event& event) override;

private:
    std::shared_ptr<Menu> menu_; ///< none before it is opened first
    bool menuOpen_ = false;
};

} // namespace oribund
