#include "oribund/host/edit/Vob.h"

#include "oribund/host/services/Host.h"

namespace oribund
{

Vob::Vob() = default;
Vob::~Vob() = default;

void Vob::prepareEdit(const NumRange<double>&) {}

double Vob::getCurrentTime()
{
    return getCurrentTimeServer().get();
}

bool Vob::isReadOnly() const
{
    const EditPtr edit = getEdit();
    return !edit || edit->isReadOnly();
}

Vob* Vob::getPlayMachine()
{
    return Host::current().playMachine();
}

} // namespace oribund
