#include "workbench/engine/client/BypassedEffects.h"

#include "workbench/model/projection/ProjectionQueries.h"

namespace workbench
{

namespace
{
ProjectedProperties settingsOf(const ProjectedFilter& effect, const BypassedEffects::Updates& updates)
{
    ProjectedProperties settings = effect.properties;
    for (ProjectedProperty& setting : settings)
        if (const auto update = updates.find({effect.id, setting.name}); update != updates.end())
            setting.value = update->second;
    return settings;
}
} // namespace

void BypassedEffects::add(const ProjectedFilter& effect, const Updates& updates, bool hung)
{
    Record& record = records_[effect.id];
    record.last = settingsOf(effect, updates);
    record.bypassed = true;
    record.hung = hung;
    ++record.failures;
}

std::vector<LeftOutEffect> BypassedEffects::in(const Projection& edit, const Updates& updates)
{
    std::vector<LeftOutEffect> left;
    for (auto& [id, record] : records_) {
        const ProjectedFilter* const now = record.bypassed ? findEffect(edit, id) : nullptr;
        if (now && settingsOf(*now, updates) != record.last && !isOff(id))
            record.bypassed = false;
        if (now && record.bypassed)
            left.push_back({id, record.hung, isOff(id)});
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
