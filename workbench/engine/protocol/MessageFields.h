#pragma once

#include "workbench/engine/protocol/Messages.h"
#include "workbench/model/EditData.h"

#include <cmath>
#include <concepts>
#include <type_traits>

/**
 * What each type in a message consists of, listed once for writing and reading. A list that does not name every field
 * of its type is an error of the compiler. What must hold of a type that was read stands beside it, as inRange().
 */
namespace workbench::wire
{

template <class T, class Type>
concept Is = std::same_as<std::remove_const_t<T>, Type>;

// The last of each choice.

constexpr ProjectedEntry::Kind lastOf(ProjectedEntry::Kind)
{
    return ProjectedEntry::Kind::Mix;
}

constexpr ProjectedTrack::Hide lastOf(ProjectedTrack::Hide)
{
    return ProjectedTrack::Hide::Both;
}

constexpr EngineProblem::Kind lastOf(EngineProblem::Kind)
{
    return EngineProblem::Kind::SoundUnavailable;
}

constexpr ExportResult::Outcome lastOf(ExportResult::Outcome)
{
    return ExportResult::Outcome::Failed;
}

constexpr EffectProbeResult::Outcome lastOf(EffectProbeResult::Outcome)
{
    return EffectProbeResult::Outcome::NotTried;
}

constexpr ParamKind lastOf(ParamKind)
{
    return ParamKind::VideoInput;
}

constexpr EffectDescription::Medium lastOf(EffectDescription::Medium)
{
    return EffectDescription::Medium::Audio;
}

// The fields.

template <class Visit, class T>
void fields(Visit& visit, T&) requires std::is_empty_v<T>
{
    visit();
}

void fields(auto& visit, Is<ProjectedProperty> auto& value)
{
    auto& [name, text] = value;
    visit(name, text);
}

void fields(auto& visit, Is<ProjectedFilter> auto& value)
{
    auto& [id, service, in, out, properties, name, partOf] = value;
    visit(id, service, in, out, properties, name, partOf);
}

void fields(auto& visit, Is<ProjectedClip> auto& value)
{
    auto& [id, service, resource, in, out, properties, filters] = value;
    visit(id, service, resource, in, out, properties, filters);
}

void fields(auto& visit, Is<ProjectedCut> auto& value)
{
    auto& [clip, in, out] = value;
    visit(clip, in, out);
}

void fields(auto& visit, Is<ProjectedTransition> auto& value)
{
    auto& [id, service, aTrack, bTrack, in, out, properties] = value;
    visit(id, service, aTrack, bTrack, in, out, properties);
}

void fields(auto& visit, Is<ProjectedEntry> auto& value)
{
    auto& [kind, length, first, second, transitions] = value;
    visit(kind, length, first, second, transitions);
}

void fields(auto& visit, Is<ProjectedTrack> auto& value)
{
    auto& [id, name, hide, entries] = value;
    visit(id, name, hide, entries);
}

void fields(auto& visit, Is<ProjectedProfile> auto& value)
{
    auto& [width, height, rate, perRate, aspect, perAspect, colourspace, progressive] = value;
    visit(width, height, rate, perRate, aspect, perAspect, colourspace, progressive);
}

void fields(auto& visit, Is<Projection> auto& value)
{
    auto& [profile, clips, tracks, transitions, length] = value;
    visit(profile, clips, tracks, transitions, length);
}

void fields(auto& visit, Is<PropertyUpdate> auto& value)
{
    auto& [service, property, text] = value;
    visit(service, property, text);
}

void fields(auto& visit, Is<MediaInfo> auto& value)
{
    auto& [path, frames, rate, perRate, width, height, hasVideo, hasAudio, audioRate, audioChannels] = value;
    visit(path, frames, rate, perRate, width, height, hasVideo, hasAudio, audioRate, audioChannels);
}

void fields(auto& visit, Is<ListItem> auto& value)
{
    auto& [label, raw] = value;
    visit(label, raw);
}

void fields(auto& visit, Is<ParamDescription> auto& value)
{
    auto& [property, name, unit, groups, collapsed, help, kind, shownWith, shownWithValues, minimum, maximum,
           defaultValue, scale, offset, integer, animatable, displayFlags, items, defaultItem, defaultColour,
           defaultPoint, defaultBool, components, format, demo] = value;
    visit(property, name, unit, groups, collapsed, help, kind, shownWith, shownWithValues, minimum, maximum);
    visit(defaultValue, scale, offset, integer, animatable, displayFlags, items, defaultItem, defaultColour);
    visit(defaultPoint, defaultBool, components, format, demo);
}

void fields(auto& visit, Is<EffectDescription> auto& value)
{
    auto& [service, title, category, help, medium, params, fixedProperties, curated, blockedBecause,
           unmaskableBecause] = value;
    visit(service, title, category, help, medium, params, fixedProperties, curated, blockedBecause, unmaskableBecause);
}

void fields(auto& visit, Is<EngineOptions> auto& value)
{
    auto& [frameTimeout, loadTimeout, sound] = value;
    visit(frameTimeout, loadTimeout, sound);
}

void fields(auto& visit, Is<EngineProblem> auto& value)
{
    auto& [kind, message, subject, effects] = value;
    visit(kind, message, subject, effects);
}

void fields(auto& visit, Is<ContainmentRules> auto& value)
{
    auto& [readable, writable, sound, memoryLimit] = value;
    visit(readable, writable, sound, memoryLimit);
}

void fields(auto& visit, Is<ContainmentReport> auto& value)
{
    auto& [files, calls, gaps] = value;
    visit(files, calls, gaps);
}

void fields(auto& visit, Is<ExportPreset> auto& value)
{
    auto& [extension, label, video, properties, largestSide] = value;
    visit(extension, label, video, properties, largestSide);
}

void fields(auto& visit, Is<ExportSettings> auto& value)
{
    auto& [path, from, to, stallTimeout, bypassed] = value;
    visit(path, from, to, stallTimeout, bypassed);
}

void fields(auto& visit, Is<ExportResult> auto& value)
{
    auto& [outcome, message] = value;
    visit(outcome, message);
}

void fields(auto& visit, Is<MediaProbeResult> auto& value)
{
    auto& [info, problem, warning] = value;
    visit(info, problem, warning);
}

void fields(auto& visit, Is<EffectProbeResult> auto& value)
{
    auto& [outcome, message] = value;
    visit(outcome, message);
}

void fields(auto& visit, Is<request::Hello> auto& value)
{
    auto& [version, options, rules, effects] = value;
    visit(version, options, rules, effects);
}

void fields(auto& visit, Is<request::Load> auto& value)
{
    auto& [projection, bypassed, revision] = value;
    visit(projection, bypassed, revision);
}

void fields(auto& visit, Is<request::Update> auto& value)
{
    auto& [updates, revision] = value;
    visit(updates, revision);
}

void fields(auto& visit, Is<request::RequestFrame> auto& value)
{
    auto& [frame, maxWidth, maxHeight] = value;
    visit(frame, maxWidth, maxHeight);
}

void fields(auto& visit, Is<request::StartExport> auto& value)
{
    auto& [projection, settings] = value;
    visit(projection, settings);
}

void fields(auto& visit, Is<request::ProbeMedia> auto& value)
{
    auto& [path] = value;
    visit(path);
}

void fields(auto& visit, Is<request::ProbeEffect> auto& value)
{
    auto& [service, properties] = value;
    visit(service, properties);
}

void fields(auto& visit, Is<request::MakeThumbnail> auto& value)
{
    auto& [projection, frame, maxWidth, maxHeight] = value;
    visit(projection, frame, maxWidth, maxHeight);
}

void fields(auto& visit, Is<request::MakeWaveform> auto& value)
{
    auto& [path, stream, from, length, parts] = value;
    visit(path, stream, from, length, parts);
}

void fields(auto& visit, Is<event::Ready> auto& value)
{
    auto& [version, containment, problem] = value;
    visit(version, containment, problem);
}

void fields(auto& visit, Is<event::FrameReady> auto& value)
{
    auto& [slot, width, height, frame, revision] = value;
    visit(slot, width, height, frame, revision);
}

void fields(auto& visit, Is<event::Position> auto& value)
{
    auto& [frame] = value;
    visit(frame);
}

void fields(auto& visit, Is<event::Playing> auto& value)
{
    auto& [playing] = value;
    visit(playing);
}

void fields(auto& visit, Is<event::Problem> auto& value)
{
    auto& [problem] = value;
    visit(problem);
}

void fields(auto& visit, Is<event::ExportProgress> auto& value)
{
    auto& [done, total] = value;
    visit(done, total);
}

void fields(auto& visit, Is<event::ExportFinished> auto& value)
{
    auto& [result] = value;
    visit(result);
}

void fields(auto& visit, Is<event::MediaProbed> auto& value)
{
    auto& [result] = value;
    visit(result);
}

void fields(auto& visit, Is<event::EffectProbed> auto& value)
{
    auto& [result] = value;
    visit(result);
}

void fields(auto& visit, Is<event::CatalogueRead> auto& value)
{
    auto& [effects, problems, presets] = value;
    visit(effects, problems, presets);
}

void fields(auto& visit, Is<WaveformPeaks> auto& value)
{
    auto& [channels, samples] = value;
    visit(channels, samples);
}

void fields(auto& visit, Is<event::ThumbnailMade> auto& value)
{
    auto& [picture, problem] = value;
    visit(picture, problem);
}

void fields(auto& visit, Is<event::WaveformMade> auto& value)
{
    auto& [peaks, problem] = value;
    visit(peaks, problem);
}

// What must hold of them.

constexpr int kLargestSide = 32'768;
constexpr int kLargestRate = 1'000'000'000;
constexpr int kMostChannels = 64;
constexpr int kMostParts = 65'536;
constexpr double kLongestStretch = 86'400.0; // s

constexpr bool isFrame(int frame)
{
    return frame >= 0 && frame <= kMostFrames;
}

constexpr bool isSide(int side)
{
    return side > 0 && side <= kLargestSide;
}

constexpr bool isRate(int numerator, int denominator)
{
    return numerator > 0 && denominator > 0 && numerator <= kLargestRate && denominator <= kLargestRate;
}

template <class T>
constexpr bool inRange(const T&)
{
    return true;
}

inline bool inRange(const ProjectedProfile& profile)
{
    return isSide(profile.width) && isSide(profile.height) && isRate(profile.fpsNumerator, profile.fpsDenominator) &&
           isRate(profile.sampleAspectNumerator, profile.sampleAspectDenominator);
}

inline bool inRange(const Projection& projection)
{
    return isFrame(projection.length);
}

inline bool inRange(const MediaInfo& info)
{
    // A film without a known length has as many frames as there are numbers.
    return info.frames >= 0 && isRate(info.fpsNumerator, info.fpsDenominator) && info.width >= 0 && info.height >= 0 &&
           info.width <= kLargestSide * 10 && info.height <= kLargestSide * 10 && info.audioRate >= 0 &&
           info.audioChannels >= 0;
}

inline bool inRange(const ParamDescription& param)
{
    return param.minimum <= param.maximum && param.scale != 0.0 && param.defaultItem >= 0 &&
           (param.items.empty() || static_cast<std::size_t>(param.defaultItem) < param.items.size());
}

inline bool inRange(const ExportPreset& preset)
{
    return preset.largestSide >= kSmallestSide;
}

inline bool inRange(const request::RequestFrame& request)
{
    return isFrame(request.frame) && request.maxWidth >= 0 && request.maxHeight >= 0;
}

inline bool inRange(const request::MakeThumbnail& request)
{
    return isFrame(request.frame) && isSide(request.maxWidth) && isSide(request.maxHeight);
}

inline bool inRange(const request::MakeWaveform& request)
{
    return request.stream >= 0 && request.from >= 0.0 && request.length > 0.0 && request.length <= kLongestStretch &&
           request.parts > 0 && request.parts <= kMostParts;
}

inline bool inRange(const WaveformPeaks& peaks)
{
    return peaks.channels >= 0 && peaks.channels <= kMostChannels;
}

inline bool inRange(const event::FrameReady& ready)
{
    return ready.slot >= 0 && isSide(ready.width) && isSide(ready.height) && isFrame(ready.frame);
}

inline bool inRange(const event::Position& position)
{
    return isFrame(position.frame);
}

inline bool inRange(const event::ExportProgress& progress)
{
    return isFrame(progress.total) && progress.done >= 0 && progress.done <= progress.total;
}

} // namespace workbench::wire
