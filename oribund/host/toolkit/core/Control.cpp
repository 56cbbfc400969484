#include "oribund/host/toolkit/core/Control.h"

#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/GlobChange.h"

#include <algorithm>

namespace oribund
{

Control::Control(const GlobCreationInfo& info)
    : MenuGlob(info)
{
    setFocusable(true);
}

bool Control::handleMouseEvent(const Event& event)
{
    if (event.code == EventCode::MouseEnter || event.code == EventCode::MouseLeave) {
        hot_ = event.code == EventCode::MouseEnter;
        changed(GlobChange::kContents);
    }
    return MenuGlob::handleMouseEvent(event);
}

void Control::setEnabled(bool enabled, eRedrawFlag redrawFlag)
{
    // What cannot be used is not told when the pointer leaves it.
    hot_ = hot_ && enabled;
    MenuGlob::setEnabled(enabled, redrawFlag);
}

void Control::setActive(bool active, eRedrawFlag redrawFlag)
{
    hot_ = hot_ && active;
    MenuGlob::setActive(active, redrawFlag);
}

void Control::applyNaturalSize(const GlobCreationInfo& info, const XY<int>& natural)
{
    applySize(info.width ? info.width : natural.x, info.height ? info.height : natural.y);
}

Kt::Box<int> Control::controlBox() const
{
    const int height = std::min(getHeight(), UifStd::getControlHeight());
    return Kt::Box<int>::fromSize({0, (getHeight() - height) / 2}, {getWidth(), height});
}

Colour Control::ink(const Colour& normal) const
{
    return canInteract() ? normal : getPalette().disabledText();
}

Colour Control::buttonGround(bool pressed) const
{
    const Colour& ground = getPalette().button();
    if (!canInteract())
        return ground.mix(getPalette().window(), 0.5);
    if (pressed)
        return ground.mix(getPalette().window(), 0.6);
    return hot_ ? ground.mix(getPalette().buttonText(), 0.1) : ground;
}

void Control::drawBox(CanvasRenderer& renderer, const Kt::Box<int>& box, const Colour& ground) const
{
    const Kt::Box<double> edges = CanvasRenderer::toDouble(box);
    const Colour& border = getPalette().border();
    renderer.fillRect(edges, ground);
    renderer.frameRect(edges, canInteract() ? border : border.mix(getPalette().window(), 0.5));
    drawFocusRing(renderer, box);
}

void Control::drawFocusRing(CanvasRenderer& renderer, const Kt::Box<int>& box) const
{
    if (hasFocus())
        renderer.frameRect(CanvasRenderer::toDouble(box), getPalette().focus());
}

} // namespace oribund
