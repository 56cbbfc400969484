#pragma once

#include "oribund/controls/bars/therm.h"
#include "oribund/host/base/NumRange.h"
#include "workbench/app/session/Workspace.h"

#include <memory>
#include <optional>

namespace workbench
{

class CueCommands;

/**
 * The whole edit in the viewer as a time bar: its window is the part that the timeline shows, and moves and zooms that;
 * cues are gone to, and have their menu.
 */
class TimeBar final : public oribund::therm
{
public:
    /** Workspace and commands outlive the bar. */
    TimeBar(const oribund::Glob::InitArgs& args, Workspace& workspace, CueCommands& cues);

    /** The time at a pixel: that of the cue there, or of the nearest frame. */
    double timeAt(int x) const;

    /** Opens the menu of the cues for a time of the edit, at a point that need not be on the bar. */
    bool openCueMenu(double editTime, const oribund::XY<int>& at);

    bool usesKey(const oribund::Event& press) const override;
    oribund::MouseCursor contextCursor(const oribund::XY<int>& local) const override;

protected:
    void drawCueAt(oribund::CanvasRenderer& renderer, int x, const oribund::Colour& colour) override;

    /** The window has a place for it. */
    std::unique_ptr<oribund::Glob> makePopup(const oribund::Cue&) override { return nullptr; }

    void reviewMenu(const oribund::Event* event) override;
    bool handleMouseEvent(const oribund::Event& event) override;

    bool hasMenu() const override { return true; }

    bool handleMessageEvent(const oribund::String& message, oribund::Glob* sender) override;
    void handleModifications(const oribund::EditModification& modification) override;

private:
    int handleReplaced(const EditReplaced&);
    int handleView(const oribund::ValServerEvent<oribund::NumRange<double>>& event);
    void showSpan();
    oribund::NumRange<double> wantedView() const;

    Workspace& workspace_;
    CueCommands& cues_;
    oribund::NumRange<double> viewAtPress_;
    std::optional<double> menuTime_;
    oribund::MethodCallback<TimeBar, EditReplaced> replacedCallback_;
    oribund::MethodCallback<TimeBar, oribund::ValServerEvent<oribund::NumRange<double>>> viewCallback_;
};

} // namespace workbench
