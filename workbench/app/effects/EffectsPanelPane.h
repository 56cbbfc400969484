#pragma once

#include "oribund/host/edit/monitor/CompoundEffectKeyframes.h"
#include "oribund/host/notify/MethodCallback.h"
#include "workbench/app/effects/EffectStack.h"
#include "workbench/app/session/Workspace.h"

#include <QStackedWidget>
#include <QTimer>

#include <functional>
#include <optional>
#include <vector>

class QLabel;

namespace oribund
{
class ScrollPanel;
}

namespace oribund::qt
{
class PanelSurface;
} // namespace oribund::qt

namespace workbench
{

class EffectTimePanel;

/** The panels of the effects on the selected segment, below the buttons and the time bar for their keyframes. */
class EffectsPanelPane final : public QStackedWidget
{
public:
    /** The workspace outlives the pane. */
    explicit EffectsPanelPane(Workspace& workspace, QWidget* parent = nullptr);
    ~EffectsPanelPane() override;

    /** The panels of the effects. */
    oribund::qt::PanelSurface& surface() { return *surface_; }

    oribund::ScrollPanel& scrollPanel() { return *scroll_; }

    /** Buttons and time bar. */
    EffectTimePanel& timePanel() { return *timePanel_; }

    /** The parameter in whose row the keyboard is; none when it is in no row. */
    std::optional<oribund::CompoundEffectKeyframes::PasteTarget> focusedParam() const;

    /** The effect in whose title row the keyboard is; kNoObject when it is in none. */
    ObjectId focusedTitle() const;

    /** Brings the panels in step now, where it otherwise happens in the next turn of the event loop. */
    void refresh();

    /** The effects that are left out of the picture are asked of that. */
    std::function<std::vector<LeftOutEffect>()> leftOut;

    /** Somebody wants one of them to be tried again. */
    std::function<void(ObjectId effect)> retryWanted;

    /** What leftOut() gives may differ from what the panels say. */
    void showLeftOut();

    /** Whether it is said that the current time is outside the segment whose effects are shown. */
    bool saysOutside() const;

    QSize sizeHint() const override { return {400, 400}; }

private:
    int handleReplaced(const EditReplaced&);
    int handleSelection(const oribund::ValServerEvent<ObjectId>& event);
    int handleTime(const oribund::ValServerEvent<double>& event);
    int handleModification(const oribund::EditModification& modification);
    void buildPanels();
    void bind();
    void refreshSoon();
    void showTime(const Segment* segment);
    void showPanels(const EffectStack::Effects& effects);
    EffectStack& stack();
    const oribund::EffectComponentPanel* focusedPanel() const;
    void showWhetherOutside();
    void reveal(const EffectStack::Effects& before);
    QString hint() const;

    Workspace& workspace_;
    oribund::qt::PanelSurface* timeSurface_;
    oribund::qt::PanelSurface* surface_;
    oribund::ScrollPanel* scroll_;
    EffectTimePanel* timePanel_;
    QWidget* panels_; ///< both views
    QLabel* outside_;
    QLabel* hint_;
    QTimer refreshTimer_;
    EffectStack::Effects shown_;
    EffectStack::Folded folded_;  ///< of the whole edit
    ObjectId timeOf_ = kNoObject; ///< the segment whose effects the time bar shows
    oribund::MethodCallback<EffectsPanelPane, EditReplaced> replaced_;
    oribund::MethodCallback<EffectsPanelPane, oribund::ValServerEvent<ObjectId>> selection_;
    oribund::MethodCallback<EffectsPanelPane, oribund::ValServerEvent<double>> time_;
    oribund::MethodCallback<EffectsPanelPane, oribund::EditModification> edit_;
};

} // namespace workbench
