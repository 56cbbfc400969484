#pragma once

#include "oribund/controls/binding/DegreesParamAdaptor.h"

#include <cmath>

namespace oribund
{

/**
 * Shows how many whole turns an angle has and replaces only those: the part within the turn stays, with its sign. Of
 * 725 degrees it shows 2; entering 0 writes 5, entering -1 writes -355.
 */
class ORIBUND_API WholeTurnsParamAdaptor final : public WholeAngleAdaptor
{
public:
    WholeTurnsParamAdaptor(const FXViewHandle& handle, const EffectValParam<Angle>& param)
        : WholeAngleAdaptor(handle, EffectValParamAccessor<Angle>(param))
    {
    }

    /** The rule itself, in degrees and turns. */
    static int turnsOf(double degrees) { return roundHalfAway(Angle{degrees}.wholeTurns()); }

    static double withTurns(double degrees, int turns) { return std::fmod(degrees, kFullTurn) + turns * kFullTurn; }

    int getDataValue() override;
    bool requestSetValue(const int& turns, ChangeKind kind) override;
};

} // namespace oribund
