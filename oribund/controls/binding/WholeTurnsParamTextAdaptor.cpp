#include "oribund/controls/binding/WholeTurnsParamTextAdaptor.h"

#include "oribund/controls/binding/WholeTurnsParamAdaptor.h"

namespace oribund
{

WString WholeTurnsParamTextAdaptor::getDataValue()
{
    const auto angle = readValue();
    return angle ? reinterpretValType<WString>(WholeTurnsParamAdaptor::turnsOf(angle->degrees)) : WString();
}

bool WholeTurnsParamTextAdaptor::requestSetValue(const WString& text, ChangeKind kind)
{
    const auto angle = readValue();
    const std::optional<int> turns = reinterpretValType<int>(text);
    return angle && turns && write(Angle{WholeTurnsParamAdaptor::withTurns(angle->degrees, *turns)}, kind);
}

} // namespace oribund
