#include "workbench/engine/worker/catalogue/CatalogueReader.h"

#include "workbench/engine/worker/catalogue/EffectMapping.h"
#include "workbench/engine/worker/catalogue/Overlay.h"
#include "workbench/engine/worker/catalogue/RawMetadata.h"

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
        effect->unmaskableBecause = overlay.whyNoMask(*effect);
        settleColours(*effect);
        if (!effect->curated)
            leaveOutUnset(*effect, raw);
        result.catalogue.add(std::move(*effect));
    }
    for (EffectDescription& effect : overlay.missing(result.catalogue, result.problems)) {
        settleColours(effect);
        result.catalogue.add(std::move(effect));
    }
    return result;
}

} // namespace workbench
