#include "workbench/engine/CatalogueReader.h"

#include "workbench/engine/EffectMapping.h"
#include "workbench/engine/Overlay.h"
#include "workbench/engine/RawMetadata.h"

#include <optional>
#include <utility>

namespace workbench
{

CatalogueResult readCatalogue(MltSession& session, const std::string& overlayText)
{
    CatalogueResult result;
    const Overlay overlay(overlayText, result.problems);
    for (const RawEffect& raw : readMetadata(session)) {
        std::optional<EffectDescription> effect = mapEffect(raw);
        if (!effect)
            continue;
        overlay.apply(*effect, result.problems);
        settleColours(*effect);
        if (!effect->curated)
            leaveOutUnset(*effect, raw);
        result.catalogue.add(std::move(*effect));
    }
    return result;
}

} // namespace workbench
