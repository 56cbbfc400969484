#include "workbench/model/EffectCatalogue.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace workbench
{

void EffectCatalogue::add(EffectDescription description)
{
    const auto order = [](const Entry& entry) { return std::tie(entry->category, entry->title, entry->service); };
    std::erase_if(entries_, [&](const Entry& entry) { return entry->service == description.service; });
    Entry added = std::make_shared<const EffectDescription>(std::move(description));
    const auto place = std::upper_bound(entries_.begin(), entries_.end(), added,
                                        [&](const Entry& a, const Entry& b) { return order(a) < order(b); });
    entries_.insert(place, std::move(added));
}

EffectCatalogue::Entry EffectCatalogue::find(std::string_view service) const
{
    const auto found =
        std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) { return entry->service == service; });
    return found == entries_.end() ? Entry() : *found;
}

} // namespace workbench
