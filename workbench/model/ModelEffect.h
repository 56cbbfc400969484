#pragma once

#include "oribund/host/effects/EffectInstance.h"
#include "oribund/host/effects/params/EffectWatch.h"
#include "workbench/model/EditData.h"
#include "workbench/model/EffectDescription.h"
#include "workbench/model/EffectPresentation.h"

#include <memory>
#include <optional>
#include <vector>

namespace workbench
{

class EffectJournal;
class ModelEffect;
class UndoStack;

/** What an effect needs of the edit that holds it. */
class iModelEffectHost
{
public:
    virtual bool mayEdit() const = 0;

    /** Where edits of the effect's parameters are recorded. */
    virtual UndoStack& undoStack() = 0;

    /** Switches an effect on or off, undoably. */
    virtual void requestEnabled(ObjectId effect, bool enabled) = 0;

    /** A parameter has changed, for whatever reason; comes with the parameter's own notification. */
    virtual void paramEdited(const oribund::EffectChangeDescription& change) = 0;

protected:
    ~iModelEffectHost() = default;
};

/**
 * An effect on a segment, with the parameters and groups of its catalogue entry. One that the catalogue does not know
 * has no parameters, and keeps everything that was saved of it.
 */
class ModelEffect : public oribund::EffectInstance
{
public:
    using Description = std::shared_ptr<const EffectDescription>;

    /** The description may be empty. */
    ModelEffect(const EffectData& data, Description description);
    ~ModelEffect() override;

    /** The edit that holds it and its mask, or null while none does. */
    void setHost(iModelEffectHost* host);

    /** Empty for an unknown effect. Its parameters are those of params(), in the same order. */
    const Description& description() const { return description_; }

    /** The service's properties as they were saved, where the catalogue does not know better. */
    const PropertyList& rest() const { return rest_; }

    /** The frames of the media between which it is at work. */
    int firstFrame() const { return first_; }

    int lastFrame() const { return last_; }

    /** What a person called it; else what the catalogue calls it. */
    oribund::WString getName() const override;

    /** Empty while it has the catalogue's. */
    const std::string& ownName() const { return name_; }

    /** getMask(), an effect of maskDescription() with an id of its own; empty for none. */
    oribund::Kt::Ptr<ModelEffect> mask() const;

    /** Why it can have no mask, a whole sentence; empty when it can. */
    std::string whyNoMask() const;

    /** Everything as plain values. */
    EffectData data() const;

    /** Those of the parameters that have keyframes. */
    std::vector<ParamData> animatedParams() const;

    bool canEditParam(const oribund::EffectValParamBase& param) const override;

    /** Asks the edit, which makes it an undoable step. */
    void setEnabled(bool enabled) override;

    // For undo steps: not recorded.
    void applyEnabled(bool enabled) { oribund::EffectInstance::setEnabled(enabled); }

    void applyParam(const ParamData& data);

    void applyName(const std::string& name) { name_ = name; }

    /** Null for none. */
    void applyMask(const EffectData* mask);

private:
    void addParams();
    void paramChanged(const oribund::EffectChangeDescription& change);
    Presentation presentationNow() const;

    Description description_;
    std::string name_;
    PropertyList rest_;
    int first_ = 0;
    int last_ = 0;
    std::vector<ParamData> unknownParams_;
    iModelEffectHost* host_ = nullptr;
    std::unique_ptr<EffectJournal> effectJournal_;
    bool hasConditions_ = false; ///< values decide which parameters are shown
    std::optional<oribund::EffectWatch> watch_;
};

} // namespace workbench
