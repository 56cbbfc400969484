#pragma once

#include "oribund/host/base/Box.h"
#include "oribund/host/base/Export.h"

namespace oribund
{

class CanvasRenderer;
class Event;
class Glob;

/** What lives on a canvas: takes its events and draws its contents. The widget toolkit has the one there is. */
class ORIBUND_API CanvasClient
{
public:
    virtual ~CanvasClient();

    /** `event` in canvas coordinates; true when something took it. */
    virtual bool handleEvent(const Event& event) = 0;

    virtual void drawContents(CanvasRenderer& renderer) = 0;

    /** A region of the canvas is out of date. */
    virtual void regionChanged(const Kt::Box<int>& region) = 0;

    /** The glob that has the keyboard; null for none. */
    virtual Glob* focusOwner() const = 0;
};

} // namespace oribund
