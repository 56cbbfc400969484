#pragma once

#include "workbench/model/EffectCatalogue.h"

#include <string>
#include <vector>

namespace workbench
{

class MltSession;

struct CatalogueResult {
    EffectCatalogue catalogue;
    std::vector<std::string> problems; ///< of the overlay, for the log; empty in a sound installation
};

/** The overlay that the program carries with it: JSON text. */
std::string builtInOverlay();

/**
 * What is installed, as effects that can be put on a segment: the metadata of every filter, improved by the overlay. A
 * mistake in the overlay is reported and costs at most the entry that it is in. Effects that must not be used are there
 * with the reason.
 */
CatalogueResult readCatalogue(MltSession& session, const std::string& overlay = builtInOverlay());

} // namespace workbench
