#include "workbench/model/ModelEffect.h"

#include "workbench/model/Ids.h"
#include "workbench/model/MaskDescription.h"
#include "workbench/model/ParamConversion.h"
#include "workbench/model/projection/ServiceText.h"
#include "workbench/model/undo/EffectJournal.h"

#include <utility>

namespace workbench
{

using oribund::EffectValParamBase;

namespace
{
oribund::WString nameOf(const EffectData& data, const ModelEffect::Description& description)
{
    return oribund::toWide(description ? description->title : data.service + " (not installed)");
}
} // namespace

ModelEffect::ModelEffect(const EffectData& data, Description description)
    : EffectInstance(stampOf(data.id), oribund::String(data.service), nameOf(data, description))
    , description_(std::move(description))
    , name_(data.name)
    , rest_(data.rest)
    , first_(data.first)
    , last_(data.last)
{
    applyEnabled(data.enabled);
    addParams();
    for (const ParamData& param : data.params) {
        const auto* const known = description_ ? description_->find(param.property) : nullptr;
        if (known)
            applyParam(param);
        else
            unknownParams_.push_back(param);
    }
    for (const EffectData& mask : data.mask)
        applyMask(&mask);
    if (description_) {
        hasConditions_ = hasConditions(*description_);
        setPresentation(presentationNow());
    }
    watch_.emplace(*this, [this](const oribund::EffectChangeDescription& change) { paramChanged(change); });
}

ModelEffect::~ModelEffect()
{
    setJournal(nullptr);
}

void ModelEffect::setHost(iModelEffectHost* host)
{
    host_ = host;
    effectJournal_ = host ? std::make_unique<EffectJournal>(host->undoStack(), objectOf(id())) : nullptr;
    setJournal(effectJournal_.get());
    // What happens to a mask is recorded under its own id.
    if (const auto own = mask())
        own->setHost(host);
}

oribund::WString ModelEffect::getName() const
{
    return name_.empty() ? EffectInstance::getName() : oribund::toWide(name_);
}

oribund::Kt::Ptr<ModelEffect> ModelEffect::mask() const
{
    return oribund::Kt::dynamicCast<ModelEffect>(getMask());
}

std::string ModelEffect::whyNoMask() const
{
    return description_ ? description_->unmaskableBecause : "It is not installed.";
}

void ModelEffect::applyMask(const EffectData* data)
{
    if (const auto former = mask())
        former->setHost(nullptr);
    const auto added = data ? oribund::Kt::makePtr<ModelEffect>(*data, maskDescription()) : nullptr;
    EffectInstance::setMask(added);
    if (added)
        added->setHost(host_);
}

EffectData ModelEffect::data() const
{
    EffectData data;
    data.id = objectOf(id());
    data.service = std::string(tagTypeId().view());
    data.enabled = isEnabled();
    for (const auto& param : params())
        data.params.push_back(dataOf(*param));
    data.params.insert(data.params.end(), unknownParams_.begin(), unknownParams_.end());
    data.rest = rest_;
    data.first = first_;
    data.last = last_;
    data.name = name_;
    if (const auto own = mask())
        data.mask.push_back(own->data());
    return data;
}

std::vector<ParamData> ModelEffect::animatedParams() const
{
    std::vector<ParamData> animated;
    for (const auto& param : params())
        if (param->functionType() == oribund::EffectValParamFnType::Keyframed)
            animated.push_back(dataOf(*param));
    for (const ParamData& param : unknownParams_)
        if (param.keyframed)
            animated.push_back(param);
    return animated;
}

bool ModelEffect::canEditParam(const oribund::EffectValParamBase& param) const
{
    return (!host_ || host_->mayEdit()) && EffectInstance::canEditParam(param);
}

void ModelEffect::setEnabled(bool enabled)
{
    if (host_)
        host_->requestEnabled(objectOf(id()), enabled);
    else
        applyEnabled(enabled);
}

void ModelEffect::applyParam(const ParamData& data)
{
    for (const auto& param : params())
        if (param->name() == std::string_view(data.property))
            return restoreParam(*param, data);
    for (ParamData& unknown : unknownParams_)
        if (unknown.property == data.property)
            unknown = data;
}

void ModelEffect::addParams()
{
    if (!description_)
        return;
    for (const ParamDescription& description : description_->params) {
        oribund::ParamInfo info;
        info.id = paramStamp(paramCount());
        info.name = oribund::String(description.property);
        info.description = oribund::UIString(oribund::toWide(description.name));
        info.displayFlags = description.displayFlags;
        info.unitText = oribund::toWide(description.unit);
        info.help = oribund::toWide(description.help);
        info.keyframable = description.animatable;
        addParam(makeParam(description, std::move(info)));
    }
}

Presentation ModelEffect::presentationNow() const
{
    return presentationOf(*description_, [this](std::size_t index) {
        const EffectValParamBase& param = *params()[index];
        return serviceText(description_->params[index], param.constantValue());
    });
}

void ModelEffect::paramChanged(const oribund::EffectChangeDescription& change)
{
    if (host_)
        host_->paramEdited(change);
    const auto param = hasConditions_ ? findParam(change.param) : ParamPtr();
    if (!param || !decidesForOthers(*description_, param->name().view()))
        return;
    if (Presentation now = presentationNow(); now != presentation()) {
        setPresentation(std::move(now));
        if (host_)
            host_->paramEdited({0, oribund::EffectChangeCode::PresentationChanged, id(), {}});
    }
}

} // namespace workbench
