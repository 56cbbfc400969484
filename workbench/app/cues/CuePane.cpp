#include "workbench/app/cues/CuePane.h"

#include "oribund/cues/CueDescriptionPanel.h"
#include "skin/PanelSurface.h"

#include <QVBoxLayout>

#include <memory>
#include <utility>

namespace workbench
{

using oribund::qt::PanelSurface;

CuePane::CuePane(Workspace& workspace, QWidget* parent)
    : QWidget(parent)
    , workspace_(workspace)
    , surface_(new PanelSurface)
    , replacedCallback_(this, &CuePane::handleReplaced)
    , cueCallback_(this, &CuePane::handleCue)
{
    oribund::CueDescriptionPanel::InitArgs args(0, 0, &surface_->canvas());
    args.vob = &workspace_.vob();
    args.cue = workspace_.cue().get();
    auto panel = std::make_unique<oribund::CueDescriptionPanel>(args);
    panel_ = panel.get();
    panel_->setAccessibleName(oribund::UIString(L"Fields of the cue"));
    panel_->enableEditing("Change cue");
    surface_->setPanel(std::move(panel), PanelSurface::Fits::Both); // the table scrolls itself
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(surface_);
    replacedCallback_.attach(workspace_.replaced());
    cueCallback_.attach(workspace_.cue().notifier());
}

CuePane::~CuePane()
{
    surface_->setPanel(nullptr); // before the viewer that it shows
}

void CuePane::takeKeyboard()
{
    panel_->takeFocus();
}

int CuePane::handleReplaced(const EditReplaced&)
{
    panel_->setVob(&workspace_.vob());
    panel_->setCue(workspace_.cue().get());
    return 0;
}

int CuePane::handleCue(const oribund::ValServerEvent<oribund::IdStamp>& event)
{
    if (event.kind == oribund::ValEventKind::Changed)
        panel_->setCue(*event.value);
    return 0;
}

} // namespace workbench
