#pragma once

#include "workbench/engine/protocol/ContainmentRules.h"
#include "workbench/engine/protocol/EngineTypes.h"
#include "workbench/engine/protocol/ExportTypes.h"
#include "workbench/engine/protocol/PictureRequests.h"
#include "workbench/engine/protocol/ProbeResults.h"
#include "workbench/engine/protocol/WaveformPeaks.h"
#include "workbench/model/EffectCatalogue.h"

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace workbench
{

class Assistant;
class EngineProcess;

/** What can be used and made here, as a worker found it. */
struct Installed {
    EffectCatalogue effects;
    std::vector<ExportPreset> presets; ///< the kinds of file that can be written, in the order of the offer
    std::vector<std::string> problems; ///< for the log
    std::string failure;               ///< for a person: why nothing is known; empty when all is well
};

/** What was asked for, or why there is none. */
struct Made {
    FrameImagePtr picture;
    std::shared_ptr<const WaveformPeaks> waveform;
    std::string problem;  ///< for a person
    bool isFinal = false; ///< it ended the worker, and would do so again
};

/**
 * Starts workers, and asks one of its own for what is quickly told: what is installed, what a file holds, whether an
 * effect works, what a frame looks like. That one is started when it is first needed and again after it has died. Any
 * thread; the members that ask wait for the answer.
 */
class EngineHost
{
public:
    /** `program` is what workers run; by default the one that was installed with this program. */
    explicit EngineHost(std::string program = {});
    ~EngineHost();

    EngineHost(const EngineHost&) = delete;
    EngineHost& operator=(const EngineHost&) = delete;

    /**
     * A worker that has been told what it may do: the effects that are installed, and these files. Empty when there can
     * be none; `problem` then says why.
     */
    std::unique_ptr<EngineProcess> start(ContainmentRules rules, const EngineOptions& options, std::string& problem);

    /** Read once. */
    std::shared_ptr<const Installed> installed();

    /** Whether installed() returns at once. */
    bool knowsInstalled() const { return known_; }

    /** For one who offers other effects than are installed. Counts for workers that are started afterwards. */
    void setInstalled(Installed installed);

    MediaProbeResult probeMedia(const std::string& path);

    EffectProbeResult probeEffect(const std::string& service,
                                  const std::vector<std::pair<std::string, std::string>>& properties = {},
                                  std::chrono::milliseconds timeLimit = std::chrono::milliseconds(5000));

    /**
     * Has it made by a worker that can read these files and, where one is started for it, as well those that will be
     * asked about `soon`. `givenUp` ends the waiting.
     */
    Made make(const PictureRequest& wanted, const std::vector<std::string>& files, const std::vector<std::string>& soon,
              const std::atomic<bool>& givenUp);

    /** Nothing will be asked for a while: the worker that is asked ends, unless it is just at work. */
    void rest();

    /** What of a worker's confinement is not in force on this system, a sentence each; once there was a worker. */
    std::vector<std::string> gaps() const;

private:
    Installed read();

    const std::string program_;

    mutable std::mutex assistantMutex_;
    const std::unique_ptr<Assistant> assistant_;

    std::mutex installedMutex_; // locked before the other
    std::shared_ptr<const Installed> installed_;
    std::atomic<bool> known_{false};
};

} // namespace workbench
