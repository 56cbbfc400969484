#pragma once

#include "oribund/host/base/Box.h"
#include "oribund/host/base/Colour.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/toolkit/core/MenuGlob.h"
#include "oribund/host/toolkit/layout/TabOrderable.h"

namespace oribund
{

/**
 * What the standard controls have in common: they take the keyboard, are one stop of the Tab key, know whether the
 * pointer is over them, and share a look.
 *
 * What the user does with a control ends in one of its user...() methods, whether it comes as injected events or from
 * a native widget. They do nothing while the control cannot interact.
 */
class ORIBUND_API Control : public MenuGlob, public TabOrderable
{
public:
    explicit Control(const GlobCreationInfo& info);

    Glob& tabGlob() override { return *this; }

    /** Whether the pointer is over it. */
    bool isHot() const { return hot_; }

    void setEnabled(bool enabled, eRedrawFlag redrawFlag = eRedrawFlag::Yes) override;
    void setActive(bool active, eRedrawFlag redrawFlag = eRedrawFlag::Yes) override;

protected:
    bool handleMouseEvent(const Event& event) override;

    /** For constructors: the size asked for at creation, with a natural one where that has zeros. */
    void applyNaturalSize(const GlobCreationInfo& info, const XY<int>& natural);

    /** The part of it that is drawn: as high as a control, in the middle of its row. */
    Kt::Box<int> controlBox() const;

    /** `normal`, or the palette's colour for what cannot be used now. */
    Colour ink(const Colour& normal) const;

    /** The ground of a button: lighter under the pointer, darker while pressed. */
    Colour buttonGround(bool pressed) const;

    /** A filled box with a frame of one pixel, which is the focus ring while this has the keyboard. */
    void drawBox(CanvasRenderer& renderer, const Kt::Box<int>& box, const Colour& ground) const;

    /** The focus ring by itself, for controls without a box. */
    void drawFocusRing(CanvasRenderer& renderer, const Kt::Box<int>& box) const;

private:
    bool hot_ = false;
};

} // namespace oribund
