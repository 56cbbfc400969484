#pragma once

#include "oribund/host/notify/MethodCallback.h"
#include "oribund/host/notify/ValServer.h"
#include "workbench/model/EditData.h"

#include <QObject>

namespace workbench
{

class EffectsPanelPane;
class KeyframeActions;
class TimelineStrip;
class Workspace;

/**
 * What Delete removes: what has the keyboard. The effect in whose title that is; keyframes that are selected, in the
 * panels and after "Select all"; a segment only in the timeline, so that none goes by accident.
 */
class DeleteKey final : public QObject
{
public:
    /** All of them outlive it. */
    DeleteKey(Workspace& workspace, TimelineStrip& strip, EffectsPanelPane& effects, KeyframeActions& keyframes);

    void press();

    /** The user has selected all keyframes: until a segment is chosen, it is these that are meant. */
    void meanKeyframes() { keyframesMeant_ = true; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void removeComponentOf(ObjectId effect);
    int handleSelection(const oribund::ValServerEvent<ObjectId>& event);

    Workspace& workspace_;
    TimelineStrip& strip_;
    EffectsPanelPane& effects_;
    KeyframeActions& keyframes_;
    bool keyframesMeant_ = false;
    oribund::MethodCallback<DeleteKey, oribund::ValServerEvent<ObjectId>> selection_;
};

} // namespace workbench
