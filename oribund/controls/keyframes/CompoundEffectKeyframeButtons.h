#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/FXTime.h"
#include "oribund/host/edit/VobClient.h"
#include "oribund/host/edit/monitor/CompoundEffectKeyframes.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitorClient.h"
#include "oribund/host/toolkit/layout/StandardPanel.h"

namespace oribund
{

class Button;
class KeyframeCommands;
class Label;

/**
 * The row of buttons that add, delete and walk the keyframes of all parameters of a track's effects at once. Each press
 * is one undo step. User-interface thread only.
 */
class ORIBUND_API CompoundEffectKeyframeButtons : public StandardPanel,
                                                  public CompoundEffectMonitorClient,
                                                  public VobClient
{
public:
    /** What the buttons send to this panel. */
    static const String addMsg;
    static const String removeMsg;
    static const String previousMsg;
    static const String nextMsg;

    /** What the zoom toggle asks of the owner: to show the significant region alone, or everything. Answered by
        setZoomActive(). */
    static const String zoomInMsg;
    static const String zoomOutMsg;

    struct InitArgs : GlobCreationInfo {
        using GlobCreationInfo::GlobCreationInfo;

        Vob* vob = nullptr; ///< may go before the panel
        IdStamp track;
    };

    /** A width of 0 is that of the buttons with their label, a height of 0 that of a row. */
    explicit CompoundEffectKeyframeButtons(const InitArgs& args);
    ~CompoundEffectKeyframeButtons() override;

    /** Also to be called when the viewer has changed its edit. */
    void setTrackID(const IdStamp& track);

    const IdStamp& getTrackID() const { return track_; }

    KeyframeCommands commands() const;

    void moveToPrevCtrlPnt();
    void moveToNextCtrlPnt();

    /** A keyframe at the current time for every animated parameter. */
    void addNewCtrlPnt();

    /** The selected keyframes go; without any, those at the current time. */
    void deleteCtrlPnt();

    /** Brings the buttons in step with the effects and the current time. */
    void updateButtons(eRedrawFlag redrawFlag);

    /** What the zoom toggle shows: whether the owner shows the significant region alone. */
    void setZoomActive(bool active, eRedrawFlag redrawFlag);

    bool isZoomActive() const { return zoomActive_; }

    /** The same, by what the owner shows of what there is. */
    void setVisibleWindowExtents(const NumRange<FXTime>& visible, const NumRange<FXTime>& whole);

    bool react(const Event& event) override;

    using StandardPanel::resize;
    /** The label is left out where there is no room for it. */
    void resize(double width, double height) override;

protected:
    /** Whether an effect counts: its controls are in the panel. */
    virtual bool showsEffect(const EffectInstance&) const { return true; }

    void handleModifications(const EditModification& modification) override;

private:
    /** What can be done at the current time. */
    struct States {
        bool previous = false;
        bool next = false;
        bool add = false;
        bool remove = false;
        bool zoom = false;
    };

    void handleFXModifications(const ChangeDescription& change) override;
    Button* addButton(const char* icon, const String& message, int text, int gap);
    States findStates(CompoundEffectMonitor& effects);
    void considerEffect(const FXKeyframeHelpers::KeyframeSet& keyframes, double fxTime, States& states) const;
    void apply(const States& states, eRedrawFlag redrawFlag);
    void passFocusOn();

    Button* previous_;
    Button* next_;
    Button* add_;
    Button* remove_;
    Button* zoom_;
    Label* label_;
    IdStamp track_;
    CompoundEffectKeyframes::KeyframeSets keyframes_;
    bool zoomActive_ = false;
};

} // namespace oribund
