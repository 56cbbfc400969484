#pragma once

#include "oribund/controls/rows/KeyframeCtrlsBase.h"
#include "oribund/host/base/NumRange.h"
#include "oribund/host/effects/params/EffectValParam.h"

namespace oribund
{

class AngleParamWidget;
class NumericEntry;
class ValSlider;

/**
 * The row of an angle: an entry for the degrees within the turn and, where the angle can have more than one turn, one
 * for whole turns; each leaves the other's part alone. Besides a slider or, if the user prefers, a dial.
 */
class ORIBUND_API KeyframeAngleCtrls : public KeyframeCtrlsBase
{
public:
    /** Without a parameter the row stays empty and disabled. */
    KeyframeAngleCtrls(const FXViewHandle& handle, const Kt::Ptr<EffectValParam<Angle>>& param, unsigned short width,
                       unsigned short labelWidth, Canvas* canvas);

    /** Whether rows have dials: the preference "use_dials_for_angles", as it was when first asked for. */
    static bool useDials();

    /** Has useDials() read the preference again, for rows made from then on. */
    static void forgetUseDials();

    static int calcHeight();
    static int calcWholeTurnsEntryWidth();

    /** What there is for the slider; 0 when nothing remains. */
    unsigned short calcSliderWidth() const;

    /**
     * In degrees: the whole range of an angle that has at most a turn each way. Else the degrees within the turn, to
     * the last before the turn is full.
     */
    static NumRange<double> getSliderValueRange(const EffectValParam<Angle>& param);

protected:
    void layoutEditors(const Kt::Box<int>& area) override;
    void handleParamReplaced(EffectValParamBase& param) override;

private:
    void addWidgets(const EffectValParam<Angle>& param);
    void applyDisplay(const EffectValParam<Angle>& param);
    void updateWidgetVisibility(const EffectValParam<Angle>& param);

    AngleParamWidget* dial_ = nullptr;
    ValSlider* slider_ = nullptr;
    NumericEntry* turns_ = nullptr;
    NumericEntry* degrees_ = nullptr;
    bool showsTurns_ = false;
};

} // namespace oribund
