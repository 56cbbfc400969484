#pragma once

#include <string>
#include <vector>

namespace workbench
{

/**
 * An edit as the services that play it: pure data, from which the engine builds what it plays and the project writer
 * writes what it saves, so that the two cannot differ.
 *
 * Frames are whole frames of the profile's rate; every `out` is the last frame, not the one after it. Property values
 * are complete texts, animations included, and hold numbers with 12 significant digits. Ids are unique within the
 * projection and stay the same as long as the object lives in the edit.
 */
struct ProjectedProperty {
    std::string name;
    std::string value;

    bool operator==(const ProjectedProperty&) const = default;
};

using ProjectedProperties = std::vector<ProjectedProperty>;

/** An effect on a clip. `in` and `out` are source frames of the clip; animations count from `in`. */
struct ProjectedFilter {
    std::string id;
    std::string service;
    int in = 0;
    int out = 0;
    ProjectedProperties properties; ///< has "disable" = "1" for an effect that is switched off
    std::string name = {};          ///< for messages; empty: the service's
    std::string partOf = {};        ///< of a filter of a mask: the id of the effect that is masked

    /** Its own, or that of the effect with which it comes and goes. */
    const std::string& effectId() const { return partOf.empty() ? id : partOf; }

    bool operator==(const ProjectedFilter&) const = default;
};

/**
 * One producer: each segment of the edit has its own. The filters are attached to the producer itself, not to its cuts,
 * so that they also run where the segment reaches into a transition.
 */
struct ProjectedClip {
    std::string id;
    std::string service; ///< empty: chosen by the resource
    std::string resource;
    int in = 0; ///< first and last source frame in use, what transitions need included
    int out = 0;
    ProjectedProperties properties;
    std::vector<ProjectedFilter> filters; ///< in the order in which they are applied

    bool operator==(const ProjectedClip&) const = default;
};

/** A use of a part of a clip. */
struct ProjectedCut {
    std::string clip; ///< id
    int in = 0;
    int out = -1;

    bool operator==(const ProjectedCut&) const = default;
};

/** A transition from a lower-numbered track of its tractor to a higher one. */
struct ProjectedTransition {
    std::string id;
    std::string service;
    int aTrack = 0;
    int bTrack = 1;
    int in = 0;  ///< frames of the tractor that holds it
    int out = 0; ///< 0 together with in = 0: always at work
    ProjectedProperties properties;

    bool operator==(const ProjectedTransition&) const = default;
};

/** One entry of a track's playlist. */
struct ProjectedEntry {
    enum class Kind {
        Blank, ///< nothing, `length` frames long
        Clip,  ///< `first`
        Mix    ///< `first` (track 0) and `second` (track 1) overlaid in a tractor of their own, joined by `transitions`
    };

    Kind kind = Kind::Blank;
    int length = 0;
    ProjectedCut first;
    ProjectedCut second;
    std::vector<ProjectedTransition> transitions;

    bool operator==(const ProjectedEntry&) const = default;
};

/** One track, from time 0 without a gap between its entries. */
struct ProjectedTrack {
    enum class Hide { Nothing = 0, Video = 1, Audio = 2, Both = 3 };

    std::string id;
    std::string name;
    Hide hide = Hide::Nothing;
    std::vector<ProjectedEntry> entries;

    bool operator==(const ProjectedTrack&) const = default;
};

struct ProjectedProfile {
    int width = 1920;
    int height = 1080;
    int fpsNumerator = 25;
    int fpsDenominator = 1;
    int sampleAspectNumerator = 1;
    int sampleAspectDenominator = 1;
    int colourspace = 709;
    bool progressive = true;

    bool operator==(const ProjectedProfile&) const = default;
};

struct Projection {
    ProjectedProfile profile;
    std::vector<ProjectedClip> clips;
    std::vector<ProjectedTrack> tracks;           ///< bottom first; the first is a black background of the full length
    std::vector<ProjectedTransition> transitions; ///< between the tracks: overlaying of pictures, mixing of sound
    int length = 0;                               ///< frames

    bool operator==(const Projection&) const = default;
};

/** A new value for one property of a filter or transition that is already there. */
struct PropertyUpdate {
    std::string service; ///< id of the filter or transition
    std::string property;
    std::string value;

    bool operator==(const PropertyUpdate&) const = default;
};

} // namespace workbench
