#pragma once

#include "oribund/host/base/Cookie.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/base/Kt.h"
#include "oribund/host/base/iVirtual.h"
#include "oribund/host/edit/EditModification.h"
#include "oribund/host/notify/Notifier.h"

namespace oribund
{

class CueList;
class iGestureJournal;
struct Cue;

/**
 * An open edit: tracks of segments along a time line that starts at 0 seconds.
 *
 * A host derives its own edit from this. What panels change goes through parameters (EffectValParam) or is bracketed
 * by an EditGesture, so that the host can undo it. User-interface thread only.
 */
class ORIBUND_API Edit : public Kt::InternalRefCount, public iVirtual
{
public:
    ~Edit() override;

    virtual Cookie getCookie() const = 0;

    /** Length of one frame, in seconds; above 0. */
    virtual double getCelResolution() const = 0;

    /** The end of the last segment, in seconds. */
    virtual double getEndTime() const = 0;

    /** Whether the user may change it. Widgets that edit are disabled while not; a host tells of a change of it as one
       of EffectChangeCode::EditabilityChanged. */
    virtual bool isReadOnly() const = 0;

    virtual const CueList& getCues() const = 0;

    /**
     * Puts `cue` in the place of the one with its id and tells the observers. To be bracketed by an EditGesture.
     * False, and nothing changed, when there is no such cue or the edit does not take it: because it is read-only, or
     * cannot have a cue at that time.
     */
    virtual bool setCue(const Cue& cue) = 0;

    /** Where the edit keeps undo steps; null by default: what is done cannot be undone. Lives as long as the edit. */
    virtual iGestureJournal* gestureJournal() { return nullptr; }

    /** Tells every observer. */
    void addModification(const EditModification& modification);

    Notifier<EditModification>& modifications() { return modifications_; }

protected:
    Edit();

private:
    Notifier<EditModification> modifications_;
};

using EditPtr = Kt::Ptr<Edit>;

} // namespace oribund
