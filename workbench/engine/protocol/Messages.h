#pragma once

#include "workbench/engine/protocol/ContainmentRules.h"
#include "workbench/engine/protocol/EngineTypes.h"
#include "workbench/engine/protocol/ExportTypes.h"
#include "workbench/engine/protocol/PictureRequests.h"
#include "workbench/engine/protocol/ProbeResults.h"
#include "workbench/engine/protocol/WaveformPeaks.h"
#include "workbench/model/EffectDescription.h"
#include "workbench/model/projection/Projection.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

/**
 * What the program and its workers tell each other: plain values, sent by MessageCodec. Frames are those of the edit,
 * sizes in pixels. A worker does requests in their order; of pictures that wait it may leave out all but the last.
 *
 * A new kind goes to the end of its variant. Whoever changes what is sent counts kProtocolVersion up: a program and a
 * worker of two builds then part at once, with a reason.
 */
namespace workbench
{

inline constexpr std::uint32_t kProtocolVersion = 3;

namespace request
{

/** Always the first. The worker confines itself, and answers with event::Ready. */
struct Hello {
    std::uint32_t version = kProtocolVersion;
    EngineOptions options;
    ContainmentRules rules;
    std::vector<EffectDescription> effects; ///< that may be made; none: those that are installed

    bool operator==(const Hello&) const = default;
};

struct Load {
    Projection projection;
    std::vector<std::string> bypassed; ///< ids of effects that are left out
    std::uint64_t revision = 0;

    bool operator==(const Load&) const = default;
};

struct Update {
    std::vector<PropertyUpdate> updates;
    std::uint64_t revision = 0;

    bool operator==(const Update&) const = default;
};

/** Answered by event::FrameReady; while playing, playing goes on from there. */
struct RequestFrame {
    int frame = 0;
    int maxWidth = 0;
    int maxHeight = 0;

    bool operator==(const RequestFrame&) const = default;
};

struct Play {
    bool operator==(const Play&) const = default;
};

struct Pause {
    bool operator==(const Pause&) const = default;
};

/** Answered by event::ExportProgress, and once by event::ExportFinished. */
struct StartExport {
    Projection projection;
    ExportSettings settings;

    bool operator==(const StartExport&) const = default;
};

/** Answered by event::MediaProbed. */
struct ProbeMedia {
    std::string path;

    bool operator==(const ProbeMedia&) const = default;
};

/** Answered by event::EffectProbed, or by the end of the worker. */
struct ProbeEffect {
    std::string service;
    std::vector<std::pair<std::string, std::string>> properties;

    bool operator==(const ProbeEffect&) const = default;
};

/** Answered by event::CatalogueRead. */
struct ReadCatalogue {
    bool operator==(const ReadCatalogue&) const = default;
};

} // namespace request

using Request = std::variant<request::Hello, request::Load, request::Update, request::RequestFrame, request::Play,
                             request::Pause, request::StartExport, request::ProbeMedia, request::ProbeEffect,
                             request::ReadCatalogue, request::MakeThumbnail, request::MakeWaveform>;

namespace event
{

struct Ready {
    std::uint32_t version = kProtocolVersion;
    ContainmentReport containment;
    std::string problem; ///< for a person: why nothing can be done; empty when all is well

    bool operator==(const Ready&) const = default;
};

/** The client takes the picture out of its FramePool, also one that it has no use for. */
struct FrameReady {
    int slot = 0;
    int width = 0;
    int height = 0;
    int frame = 0;
    std::uint64_t revision = 0;

    bool operator==(const FrameReady&) const = default;
};

/** While playing. */
struct Position {
    int frame = 0;

    bool operator==(const Position&) const = default;
};

/** Playing began or ended, by request or at the end of the edit. */
struct Playing {
    bool playing = false;

    bool operator==(const Playing&) const = default;
};

struct Problem {
    EngineProblem problem;

    bool operator==(const Problem&) const = default;
};

struct ExportProgress {
    int done = 0; ///< frames
    int total = 0;

    bool operator==(const ExportProgress&) const = default;
};

struct ExportFinished {
    ExportResult result;

    bool operator==(const ExportFinished&) const = default;
};

struct MediaProbed {
    MediaProbeResult result;

    bool operator==(const MediaProbed&) const = default;
};

struct EffectProbed {
    EffectProbeResult result;

    bool operator==(const EffectProbed&) const = default;
};

struct CatalogueRead {
    std::vector<EffectDescription> effects;
    std::vector<std::string> problems; ///< of the overlay, for the log
    std::vector<ExportPreset> presets; ///< the kinds of file that can be written here, in the order of the offer

    bool operator==(const CatalogueRead&) const = default;
};

struct ThumbnailMade {
    std::optional<FrameReady> picture;
    std::string problem; ///< for a person: why there is none

    bool operator==(const ThumbnailMade&) const = default;
};

struct WaveformMade {
    WaveformPeaks peaks; ///< silence where the file has no sound
    std::string problem; ///< for a person: why there are none

    bool operator==(const WaveformMade&) const = default;
};

} // namespace event

using Event = std::variant<event::Ready, event::FrameReady, event::Position, event::Playing, event::Problem,
                           event::ExportProgress, event::ExportFinished, event::MediaProbed, event::EffectProbed,
                           event::CatalogueRead, event::ThumbnailMade, event::WaveformMade>;

} // namespace workbench
