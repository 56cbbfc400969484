#pragma once

#include "workbench/engine/client/EngineHost.h"
#include "workbench/model/projection/Projection.h"

#include <filesystem>
#include <memory>
#include <string>

namespace workbench
{

/** A folder of the test program's own, removed at its end, with small clips that are made on first use. */
class SampleMedia
{
public:
    static const std::filesystem::path& folder();

    /** Three seconds of moving picture, 320 x 180 at 25 frames a second, with two different tones left and right. */
    static std::string clip();

    /** What ffmpeg makes of these arguments, in a new file of the folder; an existing one is used again. */
    static std::string make(const std::string& name, const std::string& arguments);
};

inline constexpr int kSampleFrames = 75;

/** The sample clip, once, on one track, over dark blue. */
Projection sampleEdit();

/** The same with one effect on it. */
Projection sampleEdit(const std::string& service, ProjectedProperties properties);

inline const std::string kSampleEffect = "effect1";

/** An effect that never comes back: it waits for a lock that the rendering of its clip holds. */
inline const std::string kHanging = "freeze";

/** An effect of the tests' own: where its setting "0" is above 0.5, it crashes. */
inline const std::string kCrashing = "frei0r.crashing";

/** Starts the workers of all tests of a program. They make kHanging too, which is blocked for everybody else. */
std::shared_ptr<EngineHost> testEngine();

} // namespace workbench
