#pragma once

#include "oribund/controls/rows/KeyframeCtrlsBase.h"

namespace oribund
{

class ValColourSwatch;

/** The row of a colour: a swatch, and a button beside it that opens the same chooser. */
class ORIBUND_API KeyframeColourCtrls : public KeyframeCtrlsBase
{
public:
    /** Bits that say what of a colour can be chosen, and how. */
    enum class Opts : unsigned {
        eNone = 0,
        eOpacity = 1,        ///< the opacity, too, is shown and chosen
        eNoPickerButton = 2, ///< the swatch alone
    };

    /** Shows no colour until setParam(). */
    KeyframeColourCtrls(const FXViewHandle& handle, const IdStamp& paramId, unsigned short width,
                        unsigned short labelWidth, unsigned short rowHeight, Canvas* canvas, Opts options);

    /** The row is for this parameter from now on. Null, or a parameter that is no colour, leaves it without one. */
    void setParam(EffectValParamBase* param);

protected:
    void layoutEditors(const Kt::Box<int>& area) override;

private:
    class PickerButton;

    ValColourSwatch* swatch_ = nullptr;
    PickerButton* picker_ = nullptr;
};

constexpr KeyframeColourCtrls::Opts operator|(KeyframeColourCtrls::Opts a, KeyframeColourCtrls::Opts b)
{
    return static_cast<KeyframeColourCtrls::Opts>(static_cast<unsigned>(a) | static_cast<unsigned>(b));
}

} // namespace oribund
