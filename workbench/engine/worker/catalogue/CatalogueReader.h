#pragma once

#include "workbench/engine/protocol/CatalogueResult.h"

#include <string>

namespace workbench
{

class MltSession;

/** The overlay that the program carries with it: JSON text. */
std::string builtInOverlay();

/**
 * What is installed, as effects that can be put on a segment: the metadata of every filter, improved by the overlay. A
 * mistake in the overlay is reported and costs at most the entry that it is in. Effects that must not be used are there
 * with the reason.
 */
CatalogueResult readCatalogue(MltSession& session, const std::string& overlay = builtInOverlay());

} // namespace workbench
