#pragma once

#include "oribund/controls/bars/ThermBase.h"
#include "oribund/host/base/Cookie.h"
#include "oribund/host/edit/Cue.h"
#include "oribund/host/edit/VobClient.h"

#include <memory>
#include <vector>

namespace oribund
{

/**
 * The time bar of an edit: shows and sets the current time of its viewer, to whole frames, and shows the edit's cues,
 * to which a click near one jumps. Without a viewer or an edit it shows time 0 and takes no change.
 */
class ORIBUND_API therm : public ThermBase, public VobClient
{
public:
    /** What the parent is sent when the user has clicked at a cue, unless there is a pop-up: it may show a panel about
        shownCue(). */
    static const String showCueMsg;

    /** A stretch of the edit that the bar marks. */
    struct Section {
        enum class Kind {
            Marked,       ///< by the user, for what is to be done there
            RangedCue,    ///< a cue with a length
            NotRealTime,  ///< cannot be played without dropping frames
            QualityEvent, ///< something that a quality report tells of
        };

        Kind kind = Kind::Marked;
        NumRange<double> times; ///< edit times
        Colour colour;
    };

    struct InitArgs : ThermBase::InitArgs {
        /** Bits of `flags`. */
        static constexpr unsigned kQuiet = 0x8;        ///< a drag is no scrub
        static constexpr unsigned kEveryFrame = 0x80;  ///< a drag shows every frame that it passes
        static constexpr unsigned kShowAtOnce = 0x100; ///< the frame under the pointer is shown as a drag begins

        using ThermBase::InitArgs::InitArgs;

        Cookie cookie;
        double start = 0.0;
        double end = 1.0;
        Vob* vob = nullptr; ///< may go before the bar
        unsigned flags = 0;
    };

    explicit therm(const InitArgs& args);
    therm(const Cookie& cookie, double start, double end, Vob* vob, Canvas* canvas);
    ~therm() override;

    const Cookie& getCookie() const { return cookie_; }

    /** Shows another viewer's edit, or the one that the viewer has now. Ends a drag. */
    void setVob(Vob* vob);

    /** The cue that was clicked last; empty before. */
    const Cue& shownCue() const { return shownCue_; }

    double getTime(eAccuracy accuracy) const override;
    void setTime(double editTime) override;
    double leastWindow() const override;
    double constrainTime(double editTime) const override;
    void jumpToPos(double editTime) override;
    void startTimeChangeSeries() override;
    void stopTimeChangeSeries() override;

    /** The timecode. */
    WString valueText() const override;

    // Its parts are the cues in its span.
    int accessiblePartCount() const override;
    void describePart(int part, AccessibleDescription& description) const override;
    int accessiblePartAt(const XY<int>& local) const override;
    bool accessibleActivate(int part = kWhole) override;

    bool usesKey(const Event& press) const override;

    /** That of the cue under the pointer. */
    UIString tooltip() const override;

protected:
    /** Opens what tells of a cue: the pop-up or, without one, what the parent shows. */
    virtual void showCuePanel(const Cue& cue);

    /** What to show at a cue, below the bar or above it, until Escape or the next press on the bar, and as long as both
        can be seen: by default a panel of its fields. Null where the parent shows it; so it has to on a canvas that has
        no room for it on either side. */
    virtual std::unique_ptr<Glob> makePopup(const Cue& cue);

    /** For derived classes whose host knows of any: an edit tells of none. They do not overlap within a kind. */
    virtual std::vector<Section> sections() const { return {}; }

    virtual void drawSection(CanvasRenderer& renderer, const Section& section);
    void drawContents(CanvasRenderer& renderer) override;
    void drawMarks(CanvasRenderer& renderer) override;
    void drawCues(CanvasRenderer& renderer) override;
    double timeStep() const override;
    bool handleMouseEvent(const Event& event) override;
    bool handleKeyEvent(const Event& event) override;
    void handleMouseLeft(const Event& event) override;
    void handleCurrentTimeChange() override;
    void handleModifications(const EditModification& modification) override;
    void handleVobGone() override;
    void handleHidden() override;

private:
    template <class Use>
    void forEachCueShown(Use use) const;
    std::vector<Cue> cuesShown() const;
    Cue cueAt(int x) const;
    bool zoomBy(double factor);
    bool placePopup(double editTime);

    Cookie cookie_;
    Cue shownCue_;
    std::unique_ptr<Glob> popup_;
    unsigned flags_;
    double wheelRest_ = 0.0;
    int pointerX_ = -1;
};

} // namespace oribund
