#pragma once

#include "oribund/controls/bars/ThermBase.h"
#include "oribund/controls/bars/ThermKeyframes.h"
#include "oribund/host/base/FXTime.h"
#include "oribund/host/edit/VobClient.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitorClient.h"
#include "oribund/host/notify/ValClient.h"

namespace oribund
{

class KeyframeCommands;

/**
 * The time bar of the effects of a track: shows their keyframes and sets the current time within them.
 *
 * The left button selects keyframes and the right one drags the selected ones; beside keyframes it is a time bar. It
 * stands for the span of the effects at the current time, and its window for the significant region, which its edges
 * change. Where no effects are it keeps the last span, so that there is a way back. User-interface thread only.
 */
class ORIBUND_API FXThermBase : public ThermBase, public CompoundEffectMonitorClient, public VobClient
{
public:
    /** What the parent is sent when the user has let go of the current time. */
    static const String timeDragEndedMsg;

    using FXKeyframe = FXKeyframeHelpers::FXKeyframe;
    using Keyframes = std::vector<FXKeyframe>;

    struct InitArgs : ThermBase::InitArgs {
        using ThermBase::InitArgs::InitArgs;

        Vob* vob = nullptr; ///< may go before the bar
        IdStamp track;
    };

    explicit FXThermBase(const InitArgs& args);
    ~FXThermBase() override;

    /** Also to be called when the viewer has changed its edit. Ends a drag. */
    void setTrackID(const IdStamp& track);

    /** Shows the same track of another viewer. */
    void setVob(Vob* vob);

    const IdStamp& getTrackID() const { return track_; }

    const ThermKeyframes::KeyframeSets& getKeyframes() const { return keyframes_.sets(); }

    /** What the user may do with them. */
    KeyframeCommands commands() const;

    /**
     * Whether the bar stands for the significant region alone. Another span, set by the owner, stands until the one
     * that would be shown changes.
     */
    void setZoomed(bool zoomed);

    bool isZoomed() const { return zoomed_; }

    /** Not beyond the end of the effects, however long the bar's span is. */
    double constrainTime(double editTime) const override;

    /** A time at or after the end of both the bar and the effects counts as the end of the effects. */
    double getTime(eAccuracy accuracy) const override;

    /** Stops play first. */
    void setTime(double editTime) override;

    /** To whole frames. */
    double snapTime(double editTime) const override;

    /** The edit time of the keyframe closest to a pixel; with a tolerance, none that is farther away or off the bar. */
    std::optional<double> getClosestKF(int x) const;
    std::optional<double> getClosestKF(int x, int tolerance) const;

    /** A frame. */
    double leastWindow() const override;

    void selectAllKeyframes(bool select);

    /** Those at an edit time that the user may select and drag here. */
    Keyframes keyframesAt(const std::optional<double>& editTime) const;

    /** What is at the current time, for who does not see it: keyframes and their values, or the time alone. */
    WString valueText() const override;

    // Its parts are the keyframes of the effects, those at one time together.
    bool usesKey(const Event& press) const override;
    void describe(AccessibleDescription& description) const override;
    int accessiblePartCount() const override;
    void describePart(int part, AccessibleDescription& description) const override;
    int accessiblePartAt(const XY<int>& local) const override;
    bool accessibleActivate(int part = kWhole) override;

    /** What is at the pointer. */
    UIString tooltip() const override;
    MouseCursor contextCursor(const XY<int>& local) const override;

    void startTimeChangeSeries() override;
    void stopTimeChangeSeries() override;

protected:
    /** Reads the keyframes again and repaints. */
    virtual void handleCompoundEffectChanges(const ChangeDescription& change);

    /** Whether the user may select and drag a keyframe here. */
    virtual bool acceptsKeyframe(const FXKeyframe&) const { return true; }

    /** A press with Ctrl. By default it selects the keyframes there and no others; beside keyframes, none at all. */
    virtual void handleOptionPress(const Event& event);

    void drawBackground(CanvasRenderer&) override {}

    void drawCues(CanvasRenderer&) override {}

    void drawWindow(CanvasRenderer& renderer, int x0, int x1) override;
    void drawContents(CanvasRenderer& renderer) override;
    virtual void drawRegions(CanvasRenderer& renderer);
    virtual void drawSelectedKeyframesBackground(CanvasRenderer& renderer);
    virtual void drawKeyFrames(CanvasRenderer& renderer);
    void drawMarks(CanvasRenderer& renderer) override;
    std::optional<double> markedTime() const override;
    Colour getWindowColour() const override;
    Colour getOuterWindowColour() const override;

    bool hasTime() const override { return region_.length() > 0.0; }

    double timeStep() const override;
    void handleDragEnd() override;
    bool handleMouseEvent(const Event& event) override;
    bool handleKeyEvent(const Event& event) override;
    bool handleMessageEvent(const String& message, Glob* sender) override;

    bool hasMenu() const override { return true; }

    void reviewMenu(const Event* event) override;

private:
    using FXRange = NumRange<FXTime, Unordered>;

    class SignificantRegion final : public ValClient<FXRange>
    {
    public:
        explicit SignificantRegion(FXThermBase& bar)
            : bar_(bar)
        {
        }

    private:
        void valChangedNtfy(const ValServerEvent<FXRange>&) override { bar_.showRegion(); }

        FXThermBase& bar_;
    };

    void handleFXModifications(const ChangeDescription& change) final { handleCompoundEffectChanges(change); }

    void bind(Vob* vob, const IdStamp& track);
    /** True when other effects are shown now. */
    bool refresh();
    void showRegion();
    NumRange<double> significantRegion() const;
    void setSignificantRegion(const NumRange<double>& region);
    bool pressKeyframes(const Event& event);
    void grabKeyframes(const Keyframes& keyframes, double editTime, int x);
    Keyframes keyframesHere() const;

    IdStamp track_;
    ThermKeyframes keyframes_;
    ThermMarks marks_; ///< of the keyframes, during a draw
    SignificantRegion significant_;
    NumRange<double> region_;   ///< that of the effects
    NumRange<double> followed_; ///< the span that the bar was given here
    bool zoomed_ = false;
    int pointerX_ = -1;
};

} // namespace oribund
