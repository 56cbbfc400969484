#include "oribund/host/toolkit/core/MenuGlob.h"

#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/Menu.h"
#include "oribund/host/toolkit/core/Skin.h"

namespace oribund
{

MenuGlob::MenuGlob(const GlobCreationInfo& info)
    : Glob(info)
{
}

MenuGlob::~MenuGlob() = default;

const Menu& MenuGlob::menu() const
{
    static const Menu kNone;
    return menu_ ? *menu_ : kNone;
}

bool MenuGlob::openMenu(const XY<int>& at, const Event* event)
{
    if (!isShown() || !canInteract())
        return false;
    // A new one each time: an item of the last may still be at work further up the stack.
    menu_ = std::make_shared<Menu>();
    GlobRef<MenuGlob> self(this);
    reviewMenu(event);
    if (!self || menu_->empty())
        return false;
    menuOpen_ = true;
    if (Skin* skin = canvas()->skin())
        skin->openMenu(*this, at);
    return true;
}

void MenuGlob::userChooseMenuItem(const MenuItem& item)
{
    if (!menuOpen_)
        return;
    const std::shared_ptr<Menu> inUse = menu_;
    menuOpen_ = false;
    Menu::choose(item, *this);
}

void MenuGlob::userCloseMenu()
{
    menuOpen_ = false;
}

void MenuGlob::reviewMenu(const Event*) {}

bool MenuGlob::handleMouseEvent(const Event& event)
{
    if (event.code == EventCode::MousePress && event.button == MouseButton::Right)
        return openMenu(event.position, &event);
    return Glob::handleMouseEvent(event);
}

bool MenuGlob::hasMenu() const
{
    return false;
}

bool MenuGlob::usesKey(const Event& press) const
{
    return press.isKeyPress(Key::Menu) ? hasMenu() : Glob::usesKey(press);
}

bool MenuGlob::handleKeyEvent(const Event& event)
{
    if (!event.isKeyPress(Key::Menu))
        return Glob::handleKeyEvent(event);
    openMenu({0, getHeight()}, &event);
    return true;
}

} // namespace oribund
