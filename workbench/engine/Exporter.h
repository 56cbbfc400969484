#pragma once

#include "workbench/model/projection/Projection.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <thread>

namespace workbench
{

class MltSession;

struct ExportSettings {
    std::string path;                              ///< absolute; its extension chooses the format, see ExportPreset.h
    int from = 0;                                  ///< first frame of the edit
    int to = -1;                                   ///< last frame; -1 for the last of the edit
    std::chrono::milliseconds stallTimeout{30000}; ///< without a frame for so long, the export is given up
};

struct ExportResult {
    enum class Outcome { Done, Cancelled, Failed };

    Outcome outcome = Outcome::Done;
    std::string message; ///< for a person; when done, what differs from the edit, mostly nothing
};

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
