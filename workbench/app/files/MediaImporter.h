#pragma once

#include "workbench/app/session/Background.h"
#include "workbench/engine/MediaProbe.h"

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

    /** As import(), but at once, and without starting a new edit. False when none of them could be used. */
    static bool importNow(Workspace& workspace, const std::vector<std::string>& paths);

private:
    using Probed = std::vector<MediaProbeResult>;

    static bool place(Workspace& workspace, const Probed& media);

    Workspace& workspace_;
    Background background_;
};

} // namespace workbench
