#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/IdStamp.h"
#include "oribund/host/base/Kt.h"
#include "oribund/host/base/NumRange.h"
#include "oribund/host/base/iVirtual.h"
#include "oribund/host/edit/Edit.h"
#include "oribund/host/notify/ValServer.h"

#include <vector>

namespace oribund
{

class CompoundEffectMonitor;
class FXEditor;
class iColourPicker;
class iFrameStatistics;
class iScrubControl;
class iTransitionsHost;

/**
 * A viewed edit: one edit in one viewer, with its current time, the range that is in view and the tracks selected.
 *
 * A host derives from this, one object for each viewer, which outlives the panels that show it. Times are edit times
 * in seconds. User-interface thread only.
 */
class ORIBUND_API Vob : public iVirtual
{
public:
    ~Vob() override;

    /** The viewed edit; empty when the viewer shows none. */
    virtual EditPtr getEdit() const = 0;

    /** The current time. Every time bar, row and graph follows this one server. */
    virtual ValServer<double>& getCurrentTimeServer() = 0;

    /** Moves the current time, limited to the edit. */
    virtual void setCurrentTime(double editTime) = 0;

    /**
     * A control is about to write a keyframe at the current time, for an effect that runs over this region of the edit.
     * A host whose panels stay with an effect wherever the time is may first move the time into the region, so that the
     * user sees what is changed. By default nothing is done.
     */
    virtual void prepareEdit(const NumRange<double>& region);

    /** The effects of the edit as panels see them; null when there is no edit. */
    virtual CompoundEffectMonitor* getEffectMonitor() = 0;

    virtual bool isPlaying() const = 0;
    virtual void stopPlay() = 0;

    /** What is told of the time being dragged; null, by default, for a viewer that treats a drag as any change. */
    virtual iScrubControl* getScrubControl() { return nullptr; }

    /** What changes effects beyond their values; null, by default, where a host offers nothing of it. */
    virtual FXEditor* fxEditor() { return nullptr; }

    /** What changes transitions; null, by default, where a host has none. */
    virtual iTransitionsHost* transitionsHost() { return nullptr; }

    /** How the colours of an effect's input are distributed; null, by default, where a host does not know. */
    virtual iFrameStatistics* frameStatistics() { return nullptr; }

    /** How colours are picked from the viewer's picture; null, by default, where they cannot be. */
    virtual iColourPicker* colourPicker() { return nullptr; }

    /** The part of the edit that the viewer's strip shows. */
    virtual NumRange<double> getViewRange() const = 0;
    virtual void setViewRange(const NumRange<double>& range) = 0;

    /** The tracks that are selected in the viewer, top first. */
    virtual std::vector<IdStamp> getSelectedChans() const = 0;

    double getCurrentTime();

    /** Whether nothing can be changed: the edit is read-only, or there is none. */
    bool isReadOnly() const;

    /** The viewer with focus, as the installed host says; null when there is none. */
    static Vob* getPlayMachine();

protected:
    Vob();
    Vob(const Vob&) = delete;
    Vob& operator=(const Vob&) = delete;
};

} // namespace oribund
