#pragma once

#include "workbench/model/MediaInfo.h"

#include <optional>
#include <string>

namespace workbench
{

/** What a media file holds. */
struct MediaProbeResult {
    std::optional<MediaInfo> info; ///< empty when the file cannot be used
    std::string problem;           ///< for a person: why not
    std::string warning;           ///< for a person: usable, but something is amiss, such as a file cut short

    bool operator==(const MediaProbeResult&) const = default;
};

/** Whether an effect can be used here. */
struct EffectProbeResult {
    enum class Outcome {
        Works,
        Missing, ///< not installed
        Fails,   ///< came back without a picture or sound
        Crashes,
        Hangs,
        NotTried ///< the probing program could not be started
    };

    Outcome outcome = Outcome::Works;
    std::string message; ///< for a person, after the effect's name: "crashes."; a whole sentence where not tried

    bool works() const { return outcome == Outcome::Works; }

    bool operator==(const EffectProbeResult&) const = default;
};

} // namespace workbench
