#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/UIString.h"

#include <deque>
#include <functional>
#include <memory>

namespace oribund
{

class Glob;
class Menu;

/** One line of a menu. */
struct ORIBUND_API MenuItem {
    enum class Kind { Action, Heading, Separator, Submenu };

    Kind kind = Kind::Action;
    UIString label;
    /** Sent to the menu's glob when the item is chosen; may be empty. */
    String message;
    /** Called after that; may be empty. Must not refer to what may be gone by then. */
    std::function<void()> action;
    bool enabled = true;
    bool checked = false;
    std::shared_ptr<Menu> submenu;
};

/** The lines of a menu, filled anew each time that it is opened. A plain value; submenus are shared by its copies. */
class ORIBUND_API Menu
{
public:
    /** The references returned stay valid until clear(). */
    MenuItem& addItem(const UIString& label, const String& message);
    MenuItem& addItem(const UIString& label, std::function<void()> action);
    void addHeading(const UIString& label);
    void addSeparator();
    Menu& addSubmenu(const UIString& label);

    void setTitle(const UIString& title) { title_ = title; }

    const UIString& title() const { return title_; }

    /** Logical pixels; for one that hangs from a button and is as wide. */
    void setMinWidth(int width) { minWidth_ = width; }

    int minWidth() const { return minWidth_; }

    const std::deque<MenuItem>& items() const { return items_; }

    /** Whether there is nothing in it to choose. */
    bool empty() const;

    void clear();

    /** Does what the item stands for, with `owner` as the glob of the menu; false when it is not to be chosen. */
    static bool choose(const MenuItem& item, Glob& owner);

private:
    UIString title_;
    int minWidth_ = 0;
    std::deque<MenuItem> items_;
};

} // namespace oribund
