#include "workbench/model/EditOperation.h"
#include "workbench/model/Editor.h"
#include "workbench/model/EffectCatalogue.h"
#include "workbench/model/MaskDescription.h"
#include "workbench/model/ParamConversion.h"

#include <algorithm>
#include <cmath>

namespace workbench
{

using namespace refusal;
using oribund::EffectValParamBase;
using oribund::EffectValParamFnType;

namespace
{
ParamRecord settingOf(ObjectId effect, const EffectValParamBase& param)
{
    return {effect, dataOf(param)};
}

void assignSetting(EditOperation& operation, ObjectId effect, const EffectValParamBase& param, ParamData data)
{
    operation.perform(assignment(settingOf(effect, param), ParamRecord{effect, std::move(data)}));
}

oribund::Kt::Ptr<EffectValParamBase> findParam(const ModelEffect& effect, const std::string& property)
{
    const auto params = effect.params();
    const auto found = std::find_if(params.begin(), params.end(),
                                    [&](const auto& param) { return param->name() == std::string_view(property); });
    return found == params.end() ? nullptr : *found;
}

/** Whether a parameter of that name stands for the same in both. Many effects just number theirs. */
bool meansTheSame(const EffectDescription* from, const EffectDescription* to, const std::string& property)
{
    if (!from || !to || from->service == to->service)
        return true;
    const ParamDescription* const a = from->find(property);
    const ParamDescription* const b = to->find(property);
    return a && b && a->kind == b->kind && a->name == b->name;
}

/** The settings of one effect that another one can take, and those that it cannot. */
class Transfer
{
public:
    Transfer(const EffectData& from, const EffectDescription* description, const ModelEffect& to)
    {
        for (const ParamData& data : from.params) {
            const auto param = findParam(to, data.property);
            if (param && meansTheSame(description, to.description().get(), data.property) && fits(data, *param)) {
                taken_.emplace_back(param, data);
            } else {
                const ParamDescription* const known = description ? description->find(data.property) : nullptr;
                left_.push_back(known ? known->name : data.property);
            }
        }
    }

    bool isEmpty() const { return taken_.empty(); }

    void perform(EditOperation& operation, ObjectId effect) const
    {
        for (const auto& [param, data] : taken_)
            assignSetting(operation, effect, *param, data);
    }

    /** Empty when all were taken. */
    std::string note() const
    {
        constexpr std::size_t kNamed = 3;
        std::string names;
        for (std::size_t i = 0; i < std::min(left_.size(), kNamed); ++i)
            names += (i > 0 ? ", \"" : "\"") + left_[i] + '"';
        if (left_.size() > kNamed)
            names += " and " + std::to_string(left_.size() - kNamed) + " more";
        return names.empty() ? names : "Not pasted, as this effect has no such setting: " + names + ".";
    }

private:
    static bool fits(const ParamData& data, const EffectValParamBase& param)
    {
        oribund::ParamValue value = param.constantValue();
        return assignPlain(value, data.constant) &&
               (!data.keyframed ||
                (param.graph() && static_cast<int>(data.channels.size()) == param.graph()->channelCount()));
    }

    std::vector<std::pair<oribund::Kt::Ptr<EffectValParamBase>, ParamData>> taken_;
    std::vector<std::string> left_; // shown names
};
} // namespace

EditOutcome Editor::renameEffect(ObjectId id, const std::string& name)
{
    if (const char* reason = locked())
        return EditOutcome::refuse(reason);
    const auto effect = edit_.timeline().findEffect(id);
    if (!effect)
        return EditOutcome::refuse(kNoEffect);
    const bool isCatalogues = effect->description() && effect->description()->title == name;
    const EffectName before{id, effect->ownName()};
    const EffectName after{id, isCatalogues ? std::string() : name};
    const std::string to = name.empty() ? std::string("its own name") : inTitle(name);
    EditOperation(edit_, "Rename " + titleOf(*effect) + " to " + to).perform(assignment(before, after));
    return EditOutcome::done(id);
}

EditOutcome Editor::setMask(ObjectId id, bool present)
{
    if (const char* reason = present ? closed() : locked())
        return EditOutcome::refuse(reason);
    const auto effect = edit_.timeline().findEffect(id);
    if (!effect || edit_.timeline().effectOfMask(id) != kNoObject)
        return EditOutcome::refuse(kNoEffect);
    const auto mask = effect->mask();
    if (!present) {
        if (mask)
            EditOperation(edit_, "Remove mask of " + titleOf(*effect)).perform(removal(MaskRecord{id, mask->data()}));
        return EditOutcome::done(id);
    }
    if (mask)
        return EditOutcome::done(objectOf(mask->id()));
    if (const std::string why = effect->whyNoMask(); !why.empty())
        return EditOutcome::refuse(why);
    const EffectData data = newMask(edit_.newId());
    EditOperation(edit_, "Add mask to " + titleOf(*effect)).perform(insertion(MaskRecord{id, data}));
    return EditOutcome::done(data.id);
}

EditOutcome Editor::resetEffect(ObjectId id)
{
    if (const char* reason = locked())
        return EditOutcome::refuse(reason);
    const auto effect = edit_.timeline().findEffect(id);
    if (!effect)
        return EditOutcome::refuse(kNoEffect);
    const bool animated = !effect->animatedParams().empty();
    EditOperation operation(edit_, "Reset " + titleOf(*effect) + (animated ? ", without its keyframes" : ""));
    for (const auto& param : effect->params())
        assignSetting(operation, id, *param,
                      {std::string(param->name().view()), plainOf(param->defaultValue()), false, {}});
    return EditOutcome::done(id);
}

EditOutcome Editor::keyframeAll(ObjectId id, double fxTime)
{
    if (const char* reason = locked())
        return EditOutcome::refuse(reason);
    const auto effect = edit_.timeline().findEffect(id);
    if (!effect)
        return EditOutcome::refuse(kNoEffect);
    const auto& params = effect->params();
    if (std::none_of(params.begin(), params.end(), [](const auto& param) { return param->isKeyframable(); }))
        return EditOutcome::refuse("Nothing of " + titleOf(*effect) + " can be animated.");
    const double time = std::isfinite(fxTime) ? std::clamp(fxTime, 0.0, 1.0) : 0.0;
    const EditOperation operation(edit_, "Keyframe all of " + titleOf(*effect));
    for (const auto& param : params) {
        if (!param->isKeyframable())
            continue;
        if (param->functionType() != EffectValParamFnType::Keyframed)
            param->setFunctionType(EffectValParamFnType::Keyframed, time);
        else if (param->graph()->indexAt(time) < 0)
            param->graph()->subdivide(time);
    }
    return EditOutcome::done(id);
}

EditOutcome Editor::pasteSettings(const EffectData& from, ObjectId id)
{
    if (const char* reason = closed())
        return EditOutcome::refuse(reason);
    const auto effect = edit_.timeline().findEffect(id);
    if (!effect)
        return EditOutcome::refuse(kNoEffect);
    const EffectCatalogue::Entry source = isMask(from) ? maskDescription() : edit_.catalogue().find(from.service);
    const Transfer transfer(from, source.get(), *effect);
    const bool mayMask = effect->whyNoMask().empty();
    const bool takesMask = !from.mask.empty() && mayMask && edit_.timeline().effectOfMask(id) == kNoObject;
    if (transfer.isEmpty() && !takesMask)
        return EditOutcome::refuse(titleOf(*effect) + " has none of the settings that were copied.");

    EditOutcome outcome = EditOutcome::done(id);
    outcome.note = transfer.note();
    EditOperation operation(edit_, "Paste settings to " + titleOf(*effect));
    transfer.perform(operation, id);
    if (takesMask) {
        MaskRecord mask{id, from.mask.front()};
        mask.data.id = edit_.newId();
        if (const auto former = effect->mask())
            operation.perform(removal(MaskRecord{id, former->data()}));
        operation.perform(insertion(mask));
    } else if (!from.mask.empty()) {
        outcome.note +=
            (outcome.note.empty() ? "The mask was not pasted. " : " The mask was not pasted. ") + effect->whyNoMask();
    }
    return outcome;
}

} // namespace workbench
