#include "oribund/host/toolkit/menus/SettingsButton.h"

#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/Image.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/KeyTable.h"

#include <algorithm>

namespace oribund
{

SettingsButton::SettingsButton(const InitArgs& args, MenuGlob& owner)
    : Control(args)
    , owner_(owner)
{
    applyNaturalSize(args, calcNaturalSize());
}

const char* SettingsButton::getIconFile()
{
    return "settings";
}

XY<int> SettingsButton::calcNaturalSize()
{
    return {4 * UifStd::getWidgetGap(), UifStd::getControlHeight()};
}

void SettingsButton::userOpenMenu()
{
    if (!canInteract())
        return;
    const XY<int> below = toCanvas({0, controlBox().bottom});
    owner_.openMenu(owner_.fromCanvas(below));
}

bool SettingsButton::handleMouseEvent(const Event& event)
{
    if (!event.isPress(MouseButton::Left))
        return Control::handleMouseEvent(event);
    userOpenMenu();
    return true;
}

const KeyTable<SettingsButton>& SettingsButton::keys()
{
    constexpr auto kOpen = [](SettingsButton& button, const Event&) { button.userOpenMenu(); };
    static constexpr KeyAction<SettingsButton> kActions[] = {
        {Key::Space, kOpen}, {Key::Enter, kOpen}, {Key::Down, kOpen}};
    static constexpr KeyTable<SettingsButton> kKeys(kActions);
    return kKeys;
}

bool SettingsButton::usesKey(const Event& press) const
{
    return keys().has(press) || Control::usesKey(press);
}

bool SettingsButton::handleKeyEvent(const Event& event)
{
    return keys().run(*this, event) || Control::handleKeyEvent(event);
}

UIString SettingsButton::accessibleName() const
{
    const UIString own = Control::accessibleName();
    return own.empty() ? tooltip() : own;
}

void SettingsButton::describe(AccessibleDescription& description) const
{
    description.role = AccessibleRole::Button;
    description.action = AccessibleAction::ShowMenu;
    description.hasMenu = true;
    description.expandable = true;
    description.expanded = owner_.isMenuOpen();
}

bool SettingsButton::accessibleActivate(int)
{
    userOpenMenu();
    return true;
}

void SettingsButton::draw(CanvasRenderer& renderer)
{
    const Kt::Box<int> box = controlBox();
    if (isHot() || owner_.isMenuOpen())
        drawBox(renderer, box, buttonGround(owner_.isMenuOpen()));
    else
        drawFocusRing(renderer, box);
    const Kt::Box<double> whole = CanvasRenderer::toDouble(box);
    const double half = std::min(whole.width(), whole.height()) * 0.35;
    const XY<double> middle = whole.centre();
    renderer.image({middle.x - half, middle.y - half, middle.x + half, middle.y + half}, Image::icon(getIconFile()),
                   ink(getPalette().buttonText()));
}

} // namespace oribund
