#include "workbench/engine/client/BypassedEffects.h"

#include "workbench/model/projection/ProjectionQueries.h"

namespace workbench
{

void BypassedEffects::add(const ProjectedFilter& effect)
{
    Record& record = records_[effect.id];
    record.last = effect;
    record.bypassed = true;
    ++record.failures;
}

std::vector<std::string> BypassedEffects::in(const Projection& edit)
{
    std::vector<std::string> left;
    for (auto& [id, record] : records_) {
        const ProjectedFilter* const now = record.bypassed ? findEffect(edit, id) : nullptr;
        if (now && now->properties != record.last.properties && !isOff(id))
            record.bypassed = false;
        if (now && record.bypassed)
            left.push_back(id);
    }
    return left;
}

bool BypassedEffects::retryAfterChange(const std::string& effect)
{
    const auto record = records_.find(effect);
    if (record == records_.end() || !record->second.bypassed || isOff(effect))
        return false;
    record->second.bypassed = false;
    return true;
}

void BypassedEffects::forgive(std::string_view effect)
{
    for (auto& [id, record] : records_)
        if (effect.empty() || id == effect)
            record.bypassed = false;
}

bool BypassedEffects::isOff(const std::string& effect) const
{
    const auto record = records_.find(effect);
    return record != records_.end() && record->second.bypassed && record->second.failures >= kTrials;
}

} // namespace workbench
