#include "oribund/host/edit/Edit.h"

namespace oribund
{

Edit::Edit() = default;
Edit::~Edit() = default;

void Edit::addModification(const EditModification& modification)
{
    modifications_.notify(modification);
}

} // namespace oribund
