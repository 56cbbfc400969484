#pragma once

#include "oribund/controls/rows/KeyframeCtrlsBase.h"
#include "oribund/host/effects/params/EffectValParam.h"
#include "oribund/host/effects/params/NumberDisplay.h"

namespace oribund
{

class NumericEntry;
class ValSlider;

/** The row of a number: a slider and an entry. */
class ORIBUND_API KeyframeFloatCtrlsBase : public KeyframeCtrlsBase
{
public:
    /** `decimals` is what init() takes. Without a parameter the row stays empty and disabled. */
    KeyframeFloatCtrlsBase(const FXViewHandle& handle, Kt::Ptr<EffectValParam<double>> param, unsigned short width,
                           unsigned short labelWidth, unsigned short rowHeight, Canvas* canvas,
                           int decimals = NumberDisplay::kDecimalsFromRange);

    /** Whether the number runs from 0 or -1 to 1. */
    static bool hasNormalisedRange(const EffectValParam<double>* param);

    /** Whether the number is shown in per cent: a normalised one unless its display flags say otherwise. */
    static bool usePercentageDisplay(const EffectValParam<double>* param);

protected:
    void layoutEditors(const Kt::Box<int>& area) override;
    void handleParamReplaced(EffectValParamBase& param) override;

private:
    /** Makes the widgets. `decimals` is how many the entry shows, or NumberDisplay::kDecimalsFromRange. */
    void init(int decimals, const EffectValParam<double>* param);
    void applyDisplay(const EffectValParam<double>& param);

    int decimals_ = NumberDisplay::kDecimalsFromRange;
    ValSlider* slider_ = nullptr;
    NumericEntry* entry_ = nullptr;
};

} // namespace oribund
