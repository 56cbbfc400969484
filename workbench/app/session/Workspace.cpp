#include "workbench/app/session/Workspace.h"

#include "oribund/host/services/Log.h"
#include "workbench/app/session/ClipPlacement.h"
#include "workbench/app/session/Say.h"
#include "workbench/store/files/StandardFolders.h"

#include <QCoreApplication>

#include <utility>

namespace workbench
{

namespace
{

void postToUserInterface(std::function<void()> act)
{
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(act), Qt::QueuedConnection);
}

} // namespace

Workspace::Workspace(std::shared_ptr<EngineHost> engine)
    : engine_(std::move(engine))
    , pictures_(engine_, {cacheFolder() / "pictures"}, postToUserInterface)
    , selectionCallback_(this, &Workspace::handleSelection)
{
    selectionCallback_.attach(selection_.notifier());
    if (engine_->knowsInstalled())
        learnInstalled();
    show(oribund::Kt::makePtr<EditModel>(emptyEdit({}, FormatData()), catalogue_));
}

Workspace::~Workspace() = default;

void Workspace::learnInstalled()
{
    if (installed_)
        return;
    installed_ = engine_->installed();
    catalogue_ = installed_->effects;
    for (const std::string& problem : installed_->problems)
        oribund::logf("effect overlay: %s\n", problem.c_str());
    for (const std::string& gap : engine_->gaps())
        oribund::logf("engine: %s\n", gap.c_str());
    if (!installed_->failure.empty())
        say(installed_->failure, oribund::MessageSink::Severity::Error);
    for (const std::function<void()>& act : std::exchange(waiting_, {}))
        act();
}

void Workspace::whenInstalledIsKnown(std::function<void()> act)
{
    if (installed_)
        act();
    else
        waiting_.push_back(std::move(act));
}

const std::vector<ExportPreset>& Workspace::exportPresets() const
{
    static const std::vector<ExportPreset> none;
    return installed_ ? installed_->presets : none;
}

void Workspace::show(const EditModelPtr& edit)
{
    const EditModelPtr before = vob_.editModel(); // until nobody shows it any more
    selection_.set(kNoObject);
    cue_.set({});
    vob_.setEdit(edit);
    replaced_.notify({});
}

int Workspace::handleSelection(const oribund::ValServerEvent<ObjectId>& event)
{
    // First of all who hear of it: panels then show the effects of the segment that is selected now.
    if (event.kind == oribund::ValEventKind::Changed)
        vob_.setSelectedSegment(selection_.get());
    return 0;
}

void Workspace::goToCue(const oribund::Cue& cue)
{
    const oribund::IdStamp id = cue.id; // what the change of time sets off may change the cues
    vob_.setCurrentTime(cue.time);
    cue_.set(id);
}

const Segment* Workspace::targetSegment() const
{
    if (const Segment* selected = edit().timeline().findSegment(selection_.get()))
        return selected;
    return topSegmentAt(edit(), vob_.currentFrame());
}

} // namespace workbench
