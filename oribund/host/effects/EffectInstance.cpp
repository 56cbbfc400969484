#include "oribund/host/effects/EffectInstance.h"

#include <algorithm>
#include <utility>

namespace oribund
{

EffectInstance::EffectInstance(const IdStamp& id, String tagTypeId, WString name)
    : id_(id)
    , tagTypeId_(std::move(tagTypeId))
    , name_(std::move(name))
{
}

EffectInstance::~EffectInstance()
{
    // Parameters, children and masks may live on with somebody else.
    setJournal(nullptr);
}

EffectInstance::ParamPtr EffectInstance::paramAt(int index) const noexcept
{
    return index >= 0 && index < paramCount() ? params_[static_cast<std::size_t>(index)] : ParamPtr();
}

int EffectInstance::indexOfParam(const IdStamp& id) const noexcept
{
    // Rows are bound in the order of the parameters.
    for (const int near : {lastAsked_, lastAsked_ + 1}) {
        if (const ParamPtr param = paramAt(near); param && param->id() == id)
            return near;
    }
    const auto found = std::find_if(params_.begin(), params_.end(), [&](const ParamPtr& p) { return p->id() == id; });
    return found == params_.end() ? -1 : static_cast<int>(found - params_.begin());
}

EffectInstance::ParamPtr EffectInstance::findParam(const IdStamp& id) const noexcept
{
    return paramAt(indexOfParam(id));
}

bool EffectInstance::addParam(const ParamPtr& param)
{
    if (!insertParam(paramCount(), param))
        return false;
    presentation_.push_back({param->id(), ParamPresentationDetails::Kind::Parameter, 0, {}});
    return true;
}

bool EffectInstance::insertParam(int index, const ParamPtr& param)
{
    if (!param || index < 0 || index > paramCount() || indexOfParam(param->id()) >= 0)
        return false;
    param->setJournal(journal_);
    params_.insert(params_.begin() + index, param);
    return true;
}

bool EffectInstance::removeParam(const IdStamp& id)
{
    const int index = indexOfParam(id);
    if (index < 0)
        return false;
    params_[static_cast<std::size_t>(index)]->setJournal(nullptr);
    params_.erase(params_.begin() + index);
    std::erase_if(presentation_, [&](const ParamPresentationDetails& entry) {
        return entry.kind == ParamPresentationDetails::Kind::Parameter && entry.id == id;
    });
    return true;
}

void EffectInstance::startGroup(const IdStamp& id, const UIString& title, bool hidden)
{
    const unsigned char flags = hidden ? ParamPresentationDetails::kHiddenGroup : static_cast<unsigned char>(0);
    presentation_.push_back({id, ParamPresentationDetails::Kind::GroupStart, flags, title});
}

void EffectInstance::endGroup()
{
    // The end carries the id and flags of its start: the last one that is still open.
    int depth = 1;
    for (auto entry = presentation_.rbegin(); entry != presentation_.rend(); ++entry) {
        if (entry->kind == ParamPresentationDetails::Kind::GroupEnd)
            ++depth;
        else if (entry->kind == ParamPresentationDetails::Kind::GroupStart && --depth == 0) {
            presentation_.push_back({entry->id, ParamPresentationDetails::Kind::GroupEnd, entry->flags, {}});
            return;
        }
    }
}

void EffectInstance::setPresentation(std::vector<ParamPresentationDetails> presentation)
{
    presentation_ = std::move(presentation);
}

bool EffectInstance::canEditParam(const EffectValParamBase& param) const
{
    // Rows ask in the order of the parameters, each several times, for every frame that is played.
    for (const int near : {lastAsked_, lastAsked_ + 1}) {
        if (near >= 0 && near < paramCount() && params_[static_cast<std::size_t>(near)].get() == &param) {
            lastAsked_ = near;
            return true;
        }
    }
    const auto found =
        std::find_if(params_.begin(), params_.end(), [&](const ParamPtr& own) { return own.get() == &param; });
    if (found == params_.end())
        return false;
    lastAsked_ = static_cast<int>(found - params_.begin());
    return true;
}

bool EffectInstance::addEmbeddedChild(const EffectPtr& child)
{
    if (!child || child->holds(*this))
        return false;
    child->setJournal(journal_);
    children_.push_back(child);
    return true;
}

bool EffectInstance::holds(const EffectInstance& effect) const noexcept
{
    return &effect == this || (mask_ && mask_->holds(effect)) ||
           std::any_of(children_.begin(), children_.end(),
                       [&](const EffectPtr& child) { return child->holds(effect); });
}

EffectInstance::ChildPath EffectInstance::findEmbeddedChild(const IdStamp& id) const
{
    ChildPath path;
    search(id, path);
    return path;
}

EffectInstance::EffectPtr EffectInstance::findWithin(const EffectPtr& effect, const IdStamp& id)
{
    if (!effect || effect->id() == id)
        return effect;
    if (EffectPtr found = findWithin(effect->mask_, id))
        return found;
    for (const EffectPtr& child : effect->children_)
        if (EffectPtr found = findWithin(child, id))
            return found;
    return {};
}

bool EffectInstance::search(const IdStamp& id, ChildPath& path) const
{
    for (std::size_t i = 0; i < children_.size(); ++i) {
        path.push_back(static_cast<int>(i));
        if (children_[i]->id() == id || children_[i]->search(id, path))
            return true;
        path.pop_back();
    }
    return false;
}

EffectInstance::EffectPtr EffectInstance::getEmbeddedChild(const ChildPath& path) const
{
    const EffectInstance* parent = this;
    EffectPtr child;
    for (const int index : path) {
        if (index < 0 || index >= static_cast<int>(parent->children_.size()))
            return {};
        child = parent->children_[static_cast<std::size_t>(index)];
        parent = child.get();
    }
    return child;
}

bool EffectInstance::setMask(const EffectPtr& mask)
{
    if (mask && mask->holds(*this))
        return false;
    if (mask_)
        mask_->setJournal(nullptr);
    mask_ = mask;
    if (mask_)
        mask_->setJournal(journal_);
    return true;
}

void EffectInstance::setJournal(iParamJournal* journal)
{
    journal_ = journal;
    for (const ParamPtr& param : params_)
        param->setJournal(journal);
    for (const EffectPtr& child : children_)
        child->setJournal(journal);
    if (mask_)
        mask_->setJournal(journal);
}

} // namespace oribund
