#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/edit/EditModification.h"
#include "oribund/host/edit/Vob.h"
#include "oribund/host/notify/MethodCallback.h"

namespace oribund
{

/** Follows one viewed edit: base of widgets that show its current time or its content. Unbound once the Vob is gone. */
class ORIBUND_API VobClient : public iVirtual
{
public:
    explicit VobClient(Vob* vob);
    ~VobClient() override;

    VobClient(const VobClient&) = delete;
    VobClient& operator=(const VobClient&) = delete;

    /** Null when unbound. */
    Vob* getVob() const { return vob_; }

    EditPtr getEdit() const;

    /** Binds to another viewed edit, or to none. Also to be called when the Vob has changed its edit. */
    void setVob(Vob* vob);

protected:
    /** The current time has moved. */
    virtual void handleCurrentTimeChange() {}

    /** The viewer is gone, getVob() is null: what shows its edit has nothing to show any more. */
    virtual void handleVobGone() {}

    /** The edit was modified. */
    virtual void handleModifications(const EditModification&) {}

private:
    int handleTimeEvent(const ValServerEvent<double>& event);
    int handleModification(const EditModification& modification);

    Vob* vob_ = nullptr;
    MethodCallback<VobClient, ValServerEvent<double>, int> timeCallback_;
    MethodCallback<VobClient, EditModification, int> editCallback_;
};

} // namespace oribund
