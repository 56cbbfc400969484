#pragma once

#include "oribund/colour/TolerantRangeEditor.h"

namespace oribund
{

/**
 * The strip of tonal extents. Shadows reach from black to the first handle at the bottom and fade out up to the first
 * one at the top; midtones lie between the two at the top and fade out towards the bottom ones; highlights begin to
 * fade in at the second one at the top, and are whole from the last handle on.
 */
class ORIBUND_API ShadowMidtoneHighlightExtentsEditor : public TolerantRangeEditor
{
public:
    ShadowMidtoneHighlightExtentsEditor(unsigned short width, const Palette& palette, Canvas* canvas);

    UIString componentName(std::size_t component) const override;

protected:
    void drawBackgroundInternal(CanvasRenderer& renderer, const Kt::Box<double>& strip) override;
    /** What each tone is, and how it fades into the next. */
    void drawRange(CanvasRenderer& renderer) override;
    /** A mark where each tone is as strong as its neighbour. */
    void drawGraticule(std::vector<Kt::Box<double>>& marks) override;

private:
    void drawName(CanvasRenderer& renderer, int textId, double left, double right);
};

} // namespace oribund
