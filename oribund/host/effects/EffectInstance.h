#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/IdStamp.h"
#include "oribund/host/base/Kt.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/effects/Taggable.h"
#include "oribund/host/effects/params/EffectValParamBase.h"
#include "oribund/host/effects/params/ParamPresentationDetails.h"

#include <span>
#include <utility>
#include <vector>

namespace oribund
{

/**
 * One effect on something in an edit: its parameters, how they are presented, effects embedded in it and its mask. A
 * host fills one, or derives from it to decide more. That something has changed is told by the host's
 * CompoundEffectMonitor, not from here; the values of parameters have observers of their own.
 */
class ORIBUND_API EffectInstance : public Taggable, public Kt::InternalRefCount
{
public:
    using ParamPresentationDetails = oribund::ParamPresentationDetails;
    using ParamPtr = Kt::Ptr<EffectValParamBase>;
    using EffectPtr = Kt::Ptr<EffectInstance>;
    /** From an effect to one embedded in it: the index among the children, level by level. */
    using ChildPath = std::vector<int>;

    EffectInstance(const IdStamp& id, String tagTypeId, WString name);
    ~EffectInstance() override;
    EffectInstance(const EffectInstance&) = delete;
    EffectInstance& operator=(const EffectInstance&) = delete;

    const IdStamp& id() const noexcept { return id_; }

    String tagTypeId() const override { return tagTypeId_; }

    /** What a person calls the effect. */
    virtual WString getName() const { return name_; }

    /** For the host, which also tells of it (EffectChangeCode::PresentationChanged). */
    void setName(WString name) { name_ = std::move(name); }

    /** Whether a panel offers to switch it on and off, and a menu. True by default. */
    virtual bool hasComponentControls() const { return true; }

    std::span<const ParamPtr> params() const noexcept { return params_; }

    int paramCount() const noexcept { return static_cast<int>(params_.size()); }

    /** Empty outside the list. */
    ParamPtr paramAt(int index) const noexcept;
    ParamPtr findParam(const IdStamp& id) const noexcept;
    /** -1 when there is none of that id. */
    int indexOfParam(const IdStamp& id) const noexcept;

    /** The first parameter of that id, as one of type `P`; empty when there is none of that type. */
    template <class Param>
    Kt::Ptr<Param> findParamAs(const IdStamp& id) const noexcept
    {
        return Kt::dynamicCast<Param>(findParam(id));
    }

    /** Parameters and the starts and ends of groups, in the order of display. */
    const std::vector<ParamPresentationDetails>& presentation() const noexcept { return presentation_; }

    /** Adds a parameter, and its entry at the end of the presentation list. False if one of its id is there. */
    bool addParam(const ParamPtr& param);
    /** As addParam(), but before the parameter at `index`; the presentation list is left alone. */
    bool insertParam(int index, const ParamPtr& param);
    /** Takes a parameter away, and its entry in the presentation list. */
    bool removeParam(const IdStamp& id);
    /** Parameters that are added up to the matching endGroup() are shown in the group. */
    void startGroup(const IdStamp& id, const UIString& title, bool hidden = false);
    /** Closes the group that was started last and is open; without one, does nothing. */
    void endGroup();
    void setPresentation(std::vector<ParamPresentationDetails> presentation);

    /** Whether the parameter can be edited now. Unless a host knows better: when it is one of this effect. */
    virtual bool canEditParam(const EffectValParamBase& param) const;

    const std::vector<EffectPtr>& embeddedChildren() const noexcept { return children_; }

    /** Refuses an empty pointer, and what this effect is embedded in. */
    bool addEmbeddedChild(const EffectPtr& child);
    /** The first child of that id at any depth; empty for the mask, and for an id that is not embedded here. */
    ChildPath findEmbeddedChild(const IdStamp& id) const;
    /** Empty when the path leads nowhere. */
    EffectPtr getEmbeddedChild(const ChildPath& path) const;

    /** The effect itself, its mask, or one embedded in it at any depth, by id; empty where there is none. */
    static EffectPtr findWithin(const EffectPtr& effect, const IdStamp& id);

    /** The effect that limits where this one works; may be empty. */
    const EffectPtr& getMask() const noexcept { return mask_; }

    /** Empty for none. Refuses what this effect is embedded in. */
    bool setMask(const EffectPtr& mask);

    virtual bool isEnabled() const { return enabled_; }

    virtual void setEnabled(bool enabled) { enabled_ = enabled; }

    iParamJournal* journal() const noexcept { return journal_; }

    /** Has the edits of all parameters recorded, those of children and mask included; null for none. */
    void setJournal(iParamJournal* journal);

private:
    bool search(const IdStamp& id, ChildPath& path) const;
    /** Whether that effect is this one, or embedded in it at any depth, masks included. */
    bool holds(const EffectInstance& effect) const noexcept;

    IdStamp id_;
    String tagTypeId_;
    WString name_;
    bool enabled_ = true;
    mutable int lastAsked_ = -1; ///< index of the parameter that canEditParam() was asked of
    std::vector<ParamPtr> params_;
    std::vector<ParamPresentationDetails> presentation_;
    std::vector<EffectPtr> children_;
    EffectPtr mask_;
    iParamJournal* journal_ = nullptr;
};

} // namespace oribund
