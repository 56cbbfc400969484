#include "workbench/app/session/Workspace.h"

#include "oribund/host/services/Log.h"
#include "workbench/app/session/ClipPlacement.h"
#include "workbench/model/projection/AllowList.h"

namespace workbench
{

namespace
{
EffectCatalogue readInstalled(MltSession& session)
{
    CatalogueResult result = readCatalogue(session);
    for (const std::string& problem : result.problems)
        oribund::logf("effect overlay: %s\n", problem.c_str());
    session.setAllowList(std::make_shared<const AllowList>(result.catalogue));
    return std::move(result.catalogue);
}
} // namespace

Workspace::Workspace(std::shared_ptr<MltSession> session)
    : session_(std::move(session))
    , catalogue_(readInstalled(*session_))
    , selectionCallback_(this, &Workspace::handleSelection)
{
    selectionCallback_.attach(selection_.notifier());
    show(oribund::Kt::makePtr<EditModel>(emptyEdit({}, FormatData()), catalogue_));
}

Workspace::~Workspace() = default;

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
