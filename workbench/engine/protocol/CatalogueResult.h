#pragma once

#include "workbench/model/EffectCatalogue.h"

#include <string>
#include <vector>

namespace workbench
{

/** The effects that are installed. */
struct CatalogueResult {
    EffectCatalogue catalogue;
    std::vector<std::string> problems; ///< of the overlay, for the log; empty in a sound installation
};

} // namespace workbench
