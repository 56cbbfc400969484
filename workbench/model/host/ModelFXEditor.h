#pragma once

#include "oribund/host/edit/FXEditor.h"
#include "workbench/model/EditData.h"
#include "workbench/model/EditOutcome.h"
#include "workbench/model/Editor.h"

#include <optional>

namespace workbench
{

class ModelVob;

/** What the panels ask for, as operations on the edit that a viewer shows. A refusal is shown to the user. */
class ModelFXEditor final : public oribund::FXEditor
{
public:
    /** The viewer outlives this. */
    explicit ModelFXEditor(const ModelVob& vob)
        : vob_(vob)
    {
    }

    Offer offers(Command command, const oribund::EffectInstance& effect) const override;
    RC rename(const oribund::EffectInstance& effect, const oribund::WString& name) override;
    RC reset(const oribund::EffectInstance& effect) override;
    RC keyframeAll(const oribund::EffectInstance& effect, oribund::FXTime time) override;
    /** What is copied stays for other edits. */
    RC copySettings(const oribund::EffectInstance& effect) override;
    RC pasteSettings(const oribund::EffectInstance& effect) override;
    RC move(const oribund::EffectInstance& effect, int by) override;
    bool isMaskable(const oribund::EffectInstance& effect, oribund::UIString& reason) const override;
    RC setMask(const oribund::EffectInstance& effect, bool present) override;
    Node findNode(const oribund::EffectInstance& effect) const override;
    RC destroyNode(const oribund::EffectInstance& effect) override;

private:
    /** Empty for one that the edit does not hold. */
    oribund::Kt::Ptr<ModelEffect> find(const oribund::EffectInstance& effect) const;
    Offer offersMove(const oribund::EffectInstance& effect, int by) const;

    /** Shows what there is to say of it. */
    static RC result(const EditOutcome& outcome);

    /** Does it, where there is an edit. */
    template <class Operation>
    RC perform(Operation operation);

    const ModelVob& vob_;
    std::optional<EffectData> copied_;
};

} // namespace workbench
