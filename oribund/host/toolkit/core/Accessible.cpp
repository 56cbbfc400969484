#include "oribund/host/toolkit/core/Accessible.h"

namespace oribund
{

Accessible::~Accessible() = default;

void Accessible::describe(AccessibleDescription&) const {}

int Accessible::accessiblePartCount() const
{
    return 0;
}

void Accessible::describePart(int, AccessibleDescription&) const {}

int Accessible::accessiblePartAt(const XY<int>&) const
{
    return kNoPart;
}

int Accessible::currentAccessiblePart() const
{
    return kNoPart;
}

bool Accessible::accessibleActivate(int)
{
    return false;
}

bool Accessible::accessibleSetNumber(double, int)
{
    return false;
}

bool Accessible::accessibleSetText(const WString&, int)
{
    return false;
}

} // namespace oribund
