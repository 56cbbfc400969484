#pragma once

#include "workbench/model/EffectDescription.h"

#include <memory>
#include <string_view>
#include <vector>

namespace workbench
{

/**
 * The effects that are installed, ordered by category and title. Filled once, at start-up; afterwards read-only.
 *
 * Descriptions are shared: an effect keeps its own alive, whatever happens to the catalogue.
 */
class EffectCatalogue
{
public:
    using Entry = std::shared_ptr<const EffectDescription>;

    /** Adds a description, in place of an earlier one of the same service. */
    void add(EffectDescription description);

    /** Empty when there is none. */
    Entry find(std::string_view service) const;

    const std::vector<Entry>& all() const { return entries_; }

private:
    std::vector<Entry> entries_;
};

} // namespace workbench
