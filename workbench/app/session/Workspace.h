#pragma once

#include "oribund/host/edit/Cue.h"
#include "oribund/host/notify/MethodCallback.h"
#include "oribund/host/notify/Notifier.h"
#include "oribund/host/notify/ValServer.h"
#include "workbench/engine/client/PictureService.h"
#include "workbench/model/Editor.h"
#include "workbench/model/host/ModelVob.h"

#include <functional>
#include <memory>
#include <vector>

namespace workbench
{

/** The workspace shows another edit: what follows the edit has to bind again. */
struct EditReplaced {
};

/**
 * What the parts of the window share: what is installed, the edit, the viewer, the selection. There always is an edit.
 * What is installed may become known a little later; nothing that holds effects is opened before. User-interface thread
 * only.
 */
class Workspace
{
public:
    explicit Workspace(std::shared_ptr<EngineHost> engine);
    ~Workspace();

    const std::shared_ptr<EngineHost>& engine() const { return engine_; }

    /** Has small pictures and waveforms made. */
    PictureService& pictures() { return pictures_; }

    /** Waits until it is known what is installed, unless it is by now. */
    void learnInstalled();

    bool knowsInstalled() const { return installed_ != nullptr; }

    /** Called once that is known: at once if it is. */
    void whenInstalledIsKnown(std::function<void()> act);

    const EffectCatalogue& catalogue() const { return catalogue_; }

    /** The kinds of file that can be exported, in the order of the offer. */
    const std::vector<ExportPreset>& exportPresets() const;

    ModelVob& vob() { return vob_; }

    EditModel& edit() const { return *vob_.editModel(); }

    Editor editor() const { return Editor(edit()); }

    /** Shows another edit, from its start. */
    void show(const EditModelPtr& edit);

    oribund::Notifier<EditReplaced>& replaced() { return replaced_; }

    /** The segment that is selected; kNoObject for none. It may be gone from the edit, and come back by an undo. */
    oribund::ValServer<ObjectId>& selection() { return selection_; }

    /** The cue that was clicked, walked to or made last; empty for none. It may be gone from the edit. */
    oribund::ValServer<oribund::IdStamp>& cue() { return cue_; }

    void goToCue(const oribund::Cue& cue);

    /** The selected segment or, without one, the topmost picture at the current time; null for none. */
    const Segment* targetSegment() const;

private:
    int handleSelection(const oribund::ValServerEvent<ObjectId>& event);

    std::shared_ptr<EngineHost> engine_;
    PictureService pictures_;
    std::shared_ptr<const Installed> installed_;
    EffectCatalogue catalogue_; // edits refer to it; empty as long as nothing is known
    std::vector<std::function<void()>> waiting_;
    ModelVob vob_;
    oribund::ValServer<ObjectId> selection_{kNoObject};
    oribund::ValServer<oribund::IdStamp> cue_;
    oribund::Notifier<EditReplaced> replaced_;
    oribund::MethodCallback<Workspace, oribund::ValServerEvent<ObjectId>> selectionCallback_;
};

} // namespace workbench
