#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/iVirtual.h"
#include "oribund/host/canvas/Border.h"
#include "oribund/host/canvas/Palette.h"

namespace oribund
{

class Canvas;

/** What every glob is made from; each widget class derives its own InitArgs from it. A plain value. */
struct ORIBUND_API GlobCreationInfo : iVirtual {
    /** Logical pixels; 0 where the widget is to choose. */
    unsigned short width = 0;
    unsigned short height = 0;
    /** Where the glob will be shown; null for one whose parent tells it. Must outlive the glob. */
    Canvas* canvas = nullptr;
    Border border;
    /** By default the palette of the colour scheme in use. */
    Palette palette;
    /** Names the glob for tests and skins; not shown. */
    String id;

    GlobCreationInfo();

    GlobCreationInfo(unsigned short w, unsigned short h, Canvas* where = nullptr);
};

} // namespace oribund
