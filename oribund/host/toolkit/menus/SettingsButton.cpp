#include "oribund/host/toolkit/menus/SettingsButton.h"

#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/Image.h"
#include "oribund/host/canvas/UifStd.h"

#include <algorithm>

namespace oribund
{

SettingsButton::SettingsButton(const InitArgs& args, MenuGlob& owner)
    : ClickControl(args)
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

void SettingsButton::userClick()
{
    if (!canInteract())
        return;
    const XY<int> below = toCanvas({0, controlBox().bottom});
    owner_.openMenu(owner_.fromCanvas(below));
}

UIString SettingsButton::accessibleName() const
{
    const UIString own = ClickControl::accessibleName();
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

void SettingsButton::draw(CanvasRenderer& renderer)
{
    const Kt::Box<int> box = controlBox();
    const bool isDown = isHeldDown() || owner_.isMenuOpen();
    if (isHot() || isDown)
        drawBox(renderer, box, buttonGround(isDown));
    else
        drawFocusRing(renderer, box);
    const Kt::Box<double> whole = CanvasRenderer::toDouble(box);
    const double half = std::min(whole.width(), whole.height()) * 0.35;
    const XY<double> middle = whole.centre();
    renderer.image({middle.x - half, middle.y - half, middle.x + half, middle.y + half}, Image::icon(getIconFile()),
                   ink(getPalette().buttonText()));
}

} // namespace oribund
