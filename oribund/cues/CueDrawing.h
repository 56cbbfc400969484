#pragma once

#include "oribund/host/base/Colour.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/base/XY.h"

namespace oribund
{

class CanvasRenderer;

/**
 * The marks with which cues and keyframes are shown on every strip, bar and graph.
 *
 * Everything is drawn as rows one pixel high, so that a mark is as crisp beside a thin line as on a wide strip. Sizes
 * derive from UifStd; sizes that come out empty draw nothing. A position is the middle of the mark's top edge unless
 * said otherwise.
 */

/** How large a cue is shown. Kept as a number. */
enum eCueSize { eCueSizeSmall = 0, eCueSizeNormal = 1, eCueSizeLarge = 2 };

/** A third of a row wide, three widget gaps high. */
ORIBUND_API XY<int> getDefaultDiamondSize();

/** The width is even, so that a cue stands evenly on both sides of its time. */
ORIBUND_API XY<int> getCueDimensions(eCueSize size);

/** A keyframe: a diamond reaching one widget gap from its centre, with a border of one pixel. */
ORIBUND_API void drawKeyFrame(CanvasRenderer& renderer, const XY<int>& centre, const Colour& fill,
                              const Colour& outline);

/** A diamond of one colour whose tips are `radius` pixels from the pixel at its centre. */
ORIBUND_API void fillDiamond(CanvasRenderer& renderer, const XY<int>& centre, int radius, const Colour& colour);

/** A diamond shaded from `top` down to `bottom`. */
ORIBUND_API void drawDiamond(CanvasRenderer& renderer, const XY<int>& position, const XY<int>& size, const Colour& top,
                             const Colour& bottom);

/** The same in the default size. */
ORIBUND_API void drawDiamond(CanvasRenderer& renderer, const XY<int>& position, const Colour& top,
                             const Colour& bottom);

/** A shaded diamond with a light rim along its upper edges, which lifts it off a dark ground. */
ORIBUND_API void drawDiamondWithTopHighlight(CanvasRenderer& renderer, const XY<double>& position, const Colour& top,
                                             const Colour& bottom);

/** A small pennant of fixed shape, for what needs to be seen but not to be taken hold of. */
ORIBUND_API void drawSmallMark(CanvasRenderer& renderer, const XY<int>& position, const Colour& colour);

/** A cue: a pennant that points down at its time, with an outline of one pixel. */
ORIBUND_API void drawCue(CanvasRenderer& renderer, const XY<int>& position, const Colour& fill, const Colour& outline,
                         eCueSize size);

} // namespace oribund
