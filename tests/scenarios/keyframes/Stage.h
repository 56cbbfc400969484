#pragma once

#include "oribund/host/base/Colour.h"
#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/layout/StandardPanel.h"

#include <memory>

namespace workbench::scenes
{

/** Where a panel is shown and used: by itself, or in a window. Places are those of the glob that is named. */
class Stage
{
public:
    using XY = oribund::XY<int>;

    virtual ~Stage() = default;

    virtual oribund::Canvas& canvas() = 0;

    /** Shows a panel in place of the last one, which is destroyed; with null none. */
    virtual void show(std::unique_ptr<oribund::StandardPanel> panel) = 0;

    virtual void press(const oribund::Glob& glob, const XY& at, oribund::MouseButton button,
                       unsigned modifiers = 0) = 0;

    /** What was pressed may be gone: places stay those of where it was. */
    virtual void moveTo(const XY& at, unsigned modifiers = 0) = 0;
    virtual void release(const XY& at) = 0;

    /** The second press of two, and its release. */
    virtual void pressAgain(const oribund::Glob& glob, const XY& at) = 0;
    virtual void wheel(const oribund::Glob& glob, const XY& at, double notches) = 0;

    /** To whatever has the keyboard. */
    virtual void key(oribund::Key key, unsigned modifiers = 0) = 0;
    virtual void type(const char* text) = 0;

    virtual oribund::Colour colourAt(oribund::Glob& glob, const XY& at) = 0;

    /** Lets what was put off happen. */
    virtual void settle() {}
};

} // namespace workbench::scenes
