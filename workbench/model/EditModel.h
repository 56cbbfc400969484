#pragma once

#include "oribund/host/edit/Edit.h"
#include "workbench/model/ModelEffect.h"
#include "workbench/model/Timeline.h"
#include "workbench/model/undo/UndoStack.h"

namespace workbench
{

class EffectCatalogue;

/** A parameter has another value, keyframes or function type: by an edit, an undo or a redo. */
using ParamEdited = oribund::EffectChangeDescription;

/**
 * An open edit: the truth of what is edited, of which what plays is a projection.
 *
 * It is changed by Editor (structure) and through the parameters of its effects, and by nothing else; both end in the
 * undo stack. Observers of modifications() hear of structure, observers of paramEdits() of parameters.
 * User-interface thread only.
 */
class EditModel : public oribund::Edit, private iModelEffectHost
{
public:
    /** `data` has no fault (findFault()). Effects that the catalogue does not know are kept as they are. The catalogue
        outlives the edit. */
    EditModel(const EditData& data, const EffectCatalogue& catalogue);
    ~EditModel() override;

    /** The whole edit as plain values. */
    EditData snapshot() const;

    const std::string& name() const { return name_; }

    void setName(const std::string& name) { name_ = name; }

    /** The file of another program that the edit came from, if it did. */
    const std::string& original() const { return original_; }

    const FormatData& format() const { return format_; }

    const Timeline& timeline() const { return timeline_; }

    const EffectCatalogue& catalogue() const { return catalogue_; }

    UndoStack& undoStack() override { return undo_; }

    void setReadOnly(bool readOnly);

    /** An id that no object of this edit has or had. */
    ObjectId newId();

    /** Whether there are ids for another operation, however many objects it makes. */
    bool hasIds() const;

    oribund::Notifier<ParamEdited>& paramEdits() { return paramEdits_; }

    oribund::Cookie getCookie() const override;

    double getCelResolution() const override { return format_.frameLength(); }

    double getEndTime() const override;

    bool isReadOnly() const override { return readOnly_; }

    const oribund::CueList& getCues() const override { return timeline_.cues(); }

    bool setCue(const oribund::Cue& cue) override;

    oribund::iGestureJournal* gestureJournal() override { return &undo_; }

private:
    bool mayEdit() const override { return !readOnly_; }

    void requestEnabled(ObjectId effect, bool enabled) override;

    void paramEdited(const oribund::EffectChangeDescription& change) override { paramEdits_.notify(change); }

    const EffectCatalogue& catalogue_;
    std::string name_;
    std::string original_;
    FormatData format_;
    Timeline timeline_;
    UndoStack undo_;
    oribund::Notifier<ParamEdited> paramEdits_;
    ObjectId lastId_ = kNoObject;
    bool readOnly_ = false;
};

using EditModelPtr = oribund::Kt::Ptr<EditModel>;

} // namespace workbench
