#pragma once

#include "oribund/controls/bars/ThermDrag.h"
#include "oribund/host/effects/keyframes/KeyframeSet.h"

#include <vector>

namespace oribund
{

class FXThermBase;

/** Drags the selected keyframes of an effect's time bar, with the right button. One undo step. */
class KeyframeDrag final : public ThermDrag
{
public:
    using Keyframes = std::vector<FXKeyframeHelpers::FXKeyframe>;

    /**
     * A press at pixel `x` on keyframes at the edit time `anchor`. `selected` are those that the press has selected;
     * `lone` says that one of them was the only one then.
     */
    KeyframeDrag(FXThermBase& bar, int x, double anchor, Keyframes selected, bool lone);

    MouseButton button() const override;
    void motion(int x) override;
    void finish() override;
    void abort() override;

    /** How far they were dragged, there and back, in seconds. */
    double distance() const { return distance_; }

private:
    FXThermBase& effectBar_;
    int lastX_;
    double anchor_;
    double distance_ = 0.0;
    double pressedAt_;
    Keyframes selected_; ///< as they were at the press
    bool lone_;
};

} // namespace oribund
