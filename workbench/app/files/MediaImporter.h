#pragma once

#include "workbench/app/session/Background.h"
#include "workbench/engine/protocol/ProbeResults.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace workbench
{

class Workspace;

/** Opens media files and puts them at the end of the edit, in the order given. */
class MediaImporter
{
public:
    explicit MediaImporter(Workspace& workspace);

    /** The files are read off the user interface's thread; those that cannot be used are named in messages. */
    void import(std::vector<std::string> paths);

    bool isBusy() const { return background_.pending() > 0; }

    /** Called whenever another file has been read, and with 0 of 0 when all are there. */
    std::function<void(int done, int total)> progressed;

    /** As import(), but at once, and without starting a new edit. False when none of them could be used. */
    static bool importNow(Workspace& workspace, const std::vector<std::string>& paths);

private:
    using Probed = std::vector<MediaProbeResult>;

    /** The files of one import, and what has been read of them. */
    struct Batch {
        std::vector<std::string> paths;
        Probed media;
    };

    void readOn(const std::shared_ptr<Batch>& batch);
    static bool place(Workspace& workspace, const Probed& media);

    Workspace& workspace_;
    int read_ = 0;   ///< of the files that are being imported
    int wanted_ = 0; ///< how many those are
    Background background_;
};

} // namespace workbench
