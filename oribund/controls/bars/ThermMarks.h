#pragma once

#include <vector>

namespace oribund
{

class CanvasRenderer;
struct Colour;

/** A pixel of a time bar that has a keyframe, or several of which one is selected. */
struct ThermMark {
    int x = 0;
    bool selected = false;
};

/** From left to right, each pixel once. */
using ThermMarks = std::vector<ThermMark>;

/** Moves those at the ends of a bar inwards, as far as it takes to see them whole. */
void keepWhole(ThermMarks& marks, int width);

/** The ground behind those that are selected. */
void drawMarksGround(CanvasRenderer& renderer, const ThermMarks& marks, int height);

/** The keyframes themselves, around the row `y`. */
void drawKeyframeMarks(CanvasRenderer& renderer, const ThermMarks& marks, int y, const Colour& outline);

} // namespace oribund
