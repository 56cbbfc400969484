#pragma once

#include "workbench/engine/protocol/ExportTypes.h"
#include "workbench/model/projection/Projection.h"

#include <functional>
#include <memory>
#include <thread>

namespace workbench
{

class MltSession;

/** Called on the exporter's thread. */
struct ExportCallbacks {
    std::function<void(int framesDone, int framesTotal)> progress;
    std::function<void(const ExportResult&)> finished; ///< exactly once for each start()
};

/**
 * Renders a range of an edit into a file, on a thread and a graph of its own, beside whatever the engine plays.
 *
 * It writes straight into the file, and leaves what a cancelled or failed export has written to whoever gave the path.
 */
class Exporter
{
public:
    explicit Exporter(std::shared_ptr<MltSession> session);

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

    std::shared_ptr<MltSession> session_;
    std::shared_ptr<Job> job_;
    std::thread thread_;
};

} // namespace workbench
