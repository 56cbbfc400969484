#include "oribund/host/edit/VobClient.h"

namespace oribund
{

VobClient::VobClient(Vob* vob)
    : timeCallback_(this, &VobClient::handleTimeEvent)
    , editCallback_(this, &VobClient::handleModification)
{
    setVob(vob);
}

VobClient::~VobClient() = default;

EditPtr VobClient::getEdit() const
{
    return vob_ ? vob_->getEdit() : EditPtr();
}

void VobClient::setVob(Vob* vob)
{
    timeCallback_.detach();
    editCallback_.detach();
    vob_ = vob;
    if (!vob_)
        return;
    timeCallback_.attach(vob_->getCurrentTimeServer().notifier());
    if (const EditPtr edit = vob_->getEdit())
        editCallback_.attach(edit->modifications());
}

int VobClient::handleTimeEvent(const ValServerEvent<double>& event)
{
    if (event.kind == ValEventKind::ServerGone) {
        setVob(nullptr);
        handleVobGone(); // may destroy this
    } else if (event.kind == ValEventKind::Changed)
        handleCurrentTimeChange();
    return 0;
}

int VobClient::handleModification(const EditModification& modification)
{
    handleModifications(modification);
    return 0;
}

} // namespace oribund
