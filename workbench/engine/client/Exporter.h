#pragma once

#include "workbench/engine/protocol/ExportTypes.h"
#include "workbench/model/projection/Projection.h"

#include <functional>
#include <memory>
#include <thread>

namespace workbench
{

class EngineHost;

/** Called on the exporter's thread. */
struct ExportCallbacks {
    std::function<void(int framesDone, int framesTotal)> progress;
    std::function<void(const ExportResult&)> finished; ///< exactly once for each start()
};

/**
 * Has a range of an edit rendered into a file, by a worker of its own, beside whatever the engine plays.
 *
 * The worker writes straight into the file, and what a cancelled or failed export has written is left to whoever gave
 * the path.
 */
class Exporter
{
public:
    explicit Exporter(std::shared_ptr<EngineHost> host);

    /** Cancels. */
    ~Exporter();

    Exporter(const Exporter&) = delete;
    Exporter& operator=(const Exporter&) = delete;

    /** False, and nothing is called, while an export runs. */
    bool start(Projection projection, ExportSettings settings, ExportCallbacks callbacks);

    void cancel();

    bool running() const;

    /** Returns when the export has finished; at once when none runs. */
    void wait();

private:
    struct Job;

    std::shared_ptr<EngineHost> host_;
    std::shared_ptr<Job> job_;
    std::thread thread_;
};

} // namespace workbench
