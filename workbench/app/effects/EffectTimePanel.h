#pragma once

#include "oribund/host/base/IdStamp.h"
#include "oribund/host/toolkit/layout/WidgetGroup.h"

#include <functional>

namespace oribund
{
class CompoundEffectKeyframeButtons;
class CompoundEffectTherm;
class Vob;
} // namespace oribund

namespace workbench
{

/** What stands above the panels of a track's effects: the buttons for all of their keyframes, and their time bar. */
class EffectTimePanel final : public oribund::WidgetGroup
{
public:
    /** The viewer outlives the panel. */
    EffectTimePanel(const InitArgs& args, oribund::Vob& vob);
    ~EffectTimePanel() override;

    /** Also to be called when the viewer has changed its edit. */
    void setTrack(const oribund::IdStamp& track);

    /** Whether the bar stands for the significant region alone. */
    void setZoomed(bool zoomed);

    /** Called when the user has let go of the current time on the bar. */
    std::function<void()> timeDragEnded;

    oribund::CompoundEffectTherm& bar() { return *bar_; }

    oribund::CompoundEffectKeyframeButtons& buttons() { return *buttons_; }

protected:
    bool handleMessageEvent(const oribund::String& message, oribund::Glob* sender) override;

private:
    /** What is zoomed to: as long as nobody has chosen a part by the bar's edges, one around the current time. */
    void chooseRegion();

    oribund::Vob& vob_;
    oribund::CompoundEffectKeyframeButtons* buttons_;
    oribund::CompoundEffectTherm* bar_;
};

} // namespace workbench
