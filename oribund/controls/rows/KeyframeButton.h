#pragma once

#include "oribund/host/toolkit/widgets/ValButton.h"

namespace oribund
{

/**
 * The button of a row that sets and removes keyframes. It shows the states of KeyframeState, each with an icon and a
 * tooltip that says what a click does; a KeyframeButtonAdaptor gives it the state and takes the clicks.
 */
class ORIBUND_API KeyframeButton : public ValButton
{
public:
    /** A square of a control's height. */
    explicit KeyframeButton(Canvas* canvas);

    /** The name of its parameter, as a screen reader says it. */
    void setParamName(const WString& name);

    UIString accessibleName() const override;

private:
    WString paramName_;
};

} // namespace oribund
