#include "workbench/model/host/ModelFXEditor.h"

#include "oribund/host/services/MessageSink.h"
#include "workbench/model/EditOperation.h"
#include "workbench/model/Ids.h"
#include "workbench/model/host/ModelVob.h"

#include <algorithm>

namespace workbench
{

using oribund::EffectInstance;

namespace
{
bool hasKeyframableParam(const EffectInstance& effect)
{
    return std::ranges::any_of(effect.params(), [](const auto& param) { return param->isKeyframable(); });
}

void tellUser(const std::string& text)
{
    oribund::showMessage(oribund::UIString(oribund::toWide(text)), oribund::MessageSink::Severity::Information);
}
} // namespace

oribund::Kt::Ptr<ModelEffect> ModelFXEditor::find(const EffectInstance& effect) const
{
    const EditModelPtr& edit = vob_.editModel();
    return edit ? edit->timeline().findEffect(objectOf(effect.id())) : nullptr;
}

ModelFXEditor::Offer ModelFXEditor::offers(Command command, const EffectInstance& effect) const
{
    const auto yesIf = [](bool can) { return can ? Offer::Yes : Offer::No; };
    const auto found = find(effect);
    if (!found)
        return Offer::No;
    const bool isMask = vob_.editModel()->timeline().effectOfMask(objectOf(effect.id())) != kNoObject;
    switch (command) {
    case Command::Rename:
        return yesIf(!isMask);
    case Command::KeyframeAll:
        return yesIf(hasKeyframableParam(*found));
    case Command::PasteSettings:
        return found->params().empty() ? Offer::No : copied_ ? Offer::Yes : Offer::NotNow;
    case Command::MoveUp:
        return isMask ? Offer::No : offersMove(effect, -1);
    case Command::MoveDown:
        return isMask ? Offer::No : offersMove(effect, 1);
    default:
        return yesIf(!found->params().empty());
    }
}

ModelFXEditor::Offer ModelFXEditor::offersMove(const EffectInstance& effect, int by) const
{
    const Timeline& timeline = vob_.editModel()->timeline();
    const ObjectId id = objectOf(effect.id());
    const int to = timeline.effectIndex(id) + by;
    const bool isWithin = to >= 0 && to < static_cast<int>(timeline.segmentOfEffect(id)->effects.size());
    return isWithin ? Offer::Yes : Offer::NotNow;
}

ModelFXEditor::RC ModelFXEditor::result(const EditOutcome& outcome)
{
    if (!outcome)
        tellUser(outcome.refused);
    else if (!outcome.note.empty())
        tellUser(outcome.note);
    return outcome ? RC::Done : RC::Refused;
}

template <class Operation>
ModelFXEditor::RC ModelFXEditor::perform(Operation operation)
{
    const EditModelPtr edit = vob_.editModel();
    return edit ? result(operation(Editor(*edit))) : RC::NotOffered;
}

ModelFXEditor::RC ModelFXEditor::rename(const EffectInstance& effect, const oribund::WString& name)
{
    const std::string text(oribund::toUTF8(name).view());
    return perform([&](Editor editor) { return editor.renameEffect(objectOf(effect.id()), text); });
}

ModelFXEditor::RC ModelFXEditor::reset(const EffectInstance& effect)
{
    return perform([&](Editor editor) { return editor.resetEffect(objectOf(effect.id())); });
}

ModelFXEditor::RC ModelFXEditor::keyframeAll(const EffectInstance& effect, oribund::FXTime time)
{
    return perform([&](Editor editor) { return editor.keyframeAll(objectOf(effect.id()), time.normalised); });
}

ModelFXEditor::RC ModelFXEditor::copySettings(const EffectInstance& effect)
{
    const auto found = find(effect);
    if (!found)
        return RC::NotOffered;
    copied_ = found->data();
    return RC::Done;
}

ModelFXEditor::RC ModelFXEditor::pasteSettings(const EffectInstance& effect)
{
    if (!copied_)
        return RC::NotOffered;
    return perform([&](Editor editor) { return editor.pasteSettings(*copied_, objectOf(effect.id())); });
}

ModelFXEditor::RC ModelFXEditor::move(const EffectInstance& effect, int by)
{
    if (!find(effect) || offersMove(effect, by) != Offer::Yes)
        return RC::NotOffered;
    const int to = vob_.editModel()->timeline().effectIndex(objectOf(effect.id())) + by;
    return perform([&](Editor editor) { return editor.moveEffect(objectOf(effect.id()), to); });
}

bool ModelFXEditor::isMaskable(const EffectInstance& effect, oribund::UIString& reason) const
{
    reason = oribund::UIString();
    const auto found = find(effect);
    if (!found || vob_.editModel()->timeline().effectOfMask(objectOf(effect.id())) != kNoObject)
        return false;
    reason = oribund::UIString(oribund::toWide(found->whyNoMask()));
    return reason.empty();
}

ModelFXEditor::RC ModelFXEditor::setMask(const EffectInstance& effect, bool present)
{
    return perform([&](Editor editor) { return editor.setMask(objectOf(effect.id()), present); });
}

ModelFXEditor::Node ModelFXEditor::findNode(const EffectInstance& effect) const
{
    return find(effect) ? Node::Effect : Node::None;
}

ModelFXEditor::RC ModelFXEditor::destroyNode(const EffectInstance& effect)
{
    return perform([&](Editor editor) { return editor.removeEffect(objectOf(effect.id())); });
}

} // namespace workbench
