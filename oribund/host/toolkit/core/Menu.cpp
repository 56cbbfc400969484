#include "oribund/host/toolkit/core/Menu.h"

#include "oribund/host/toolkit/core/Glob.h"

#include <algorithm>

namespace oribund
{

MenuItem& Menu::addItem(const UIString& label, const String& message)
{
    MenuItem& item = items_.emplace_back();
    item.label = label;
    item.message = message;
    return item;
}

MenuItem& Menu::addItem(const UIString& label, std::function<void()> action)
{
    MenuItem& item = items_.emplace_back();
    item.label = label;
    item.action = std::move(action);
    return item;
}

void Menu::addHeading(const UIString& label)
{
    MenuItem& item = items_.emplace_back();
    item.kind = MenuItem::Kind::Heading;
    item.label = label;
}

void Menu::addSeparator()
{
    items_.emplace_back().kind = MenuItem::Kind::Separator;
}

Menu& Menu::addSubmenu(const UIString& label)
{
    MenuItem& item = items_.emplace_back();
    item.kind = MenuItem::Kind::Submenu;
    item.label = label;
    item.submenu = std::make_shared<Menu>();
    return *item.submenu;
}

bool Menu::empty() const
{
    return std::none_of(items_.begin(), items_.end(), [](const MenuItem& item) {
        return item.kind == MenuItem::Kind::Action ||
               (item.kind == MenuItem::Kind::Submenu && item.submenu && !item.submenu->empty());
    });
}

void Menu::clear()
{
    title_ = {};
    items_.clear();
}

bool Menu::choose(const MenuItem& item, Glob& owner)
{
    if (item.kind != MenuItem::Kind::Action || !item.enabled)
        return false;
    const MenuItem chosen = item; // what it does may fill the menu anew, or destroy it
    if (!chosen.message.empty())
        owner.sendMsg(chosen.message);
    if (chosen.action)
        chosen.action();
    return true;
}

} // namespace oribund
