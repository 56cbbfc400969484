#include "oribund/controls/binding/WholeTurnsParamAdaptor.h"

namespace oribund
{

int WholeTurnsParamAdaptor::getDataValue()
{
    const auto angle = readValue();
    return angle ? turnsOf(angle->degrees) : 0;
}

bool WholeTurnsParamAdaptor::requestSetValue(const int& turns, ChangeKind kind)
{
    const auto angle = readValue();
    return angle && write(Angle{withTurns(angle->degrees, turns)}, kind);
}

} // namespace oribund
