#include "workbench/app/timeline/TimeBarPane.h"

#include "skin/PanelSurface.h"
#include "skin/QtConversions.h"
#include "workbench/app/cues/CueCommands.h"
#include "workbench/app/cues/CueNameField.h"
#include "workbench/app/timeline/TimeBar.h"

#include <QVBoxLayout>

#include <memory>
#include <utility>

namespace workbench
{

using oribund::qt::fromQt;
using oribund::qt::PanelSurface;
using oribund::qt::toQt;

TimeBarPane::TimeBarPane(Workspace& workspace, CueCommands& cues, QWidget* parent)
    : QWidget(parent)
    , cues_(cues)
    , surface_(new PanelSurface)
    , replacedCallback_(this, &TimeBarPane::handleReplaced)
{
    auto bar = std::make_unique<TimeBar>(oribund::Glob::InitArgs(0, 0, &surface_->canvas()), workspace, cues);
    bar_ = bar.get();
    surface_->setPanel(std::move(bar));
    surface_->setFixedHeight(bar_->getHeight());
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(8, 4, 8, 0);
    column->addWidget(surface_);
    replacedCallback_.attach(workspace.replaced());
}

TimeBarPane::~TimeBarPane()
{
    surface_->setPanel(nullptr);
}

CueNameField* TimeBarPane::nameField() const
{
    return field_;
}

void TimeBarPane::openCueMenu(double editTime, const QPoint& at)
{
    bar_->openCueMenu(editTime, bar_->fromCanvas(fromQt(surface_->mapFromGlobal(at))));
}

void TimeBarPane::askForName(const oribund::Cue& cue)
{
    if (field_)
        field_->abort();
    const QPoint above(bar_->geometry().f2xi(cue.time), -2);
    field_ = CueNameField::open(*window(), surface_->mapTo(window(), above), toQt(cue.name),
                                [this, id = cue.id](const QString& name) { cues_.rename(id, fromQt(name)); });
}

int TimeBarPane::handleReplaced(const EditReplaced&)
{
    if (field_)
        field_->abort(); // its cue is not in this edit
    return 0;
}

} // namespace workbench
