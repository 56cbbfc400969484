#pragma once

#include "workbench/app/session/Background.h"
#include "workbench/model/EditData.h"

#include <functional>
#include <string>
#include <vector>

namespace workbench
{

class Workspace;

/** Finds media again whose files have been moved or renamed. User-interface thread only. */
class MediaFinder
{
public:
    /** The workspace outlives it. */
    explicit MediaFinder(Workspace& workspace);

    /** The media of the edit whose files are not there. */
    std::vector<MediaData> missing() const;

    /**
     * The user says where a missing file is now. The other missing ones are looked for where they would be, had they
     * moved with it; what is found is one undo step. The files are read off this thread; `done` is called at the end,
     * unless the finder is gone by then.
     */
    void relink(const MediaData& media, const std::string& path, std::function<void()> done);

    bool isBusy() const { return background_.pending() > 0; }

private:
    struct Found;

    void take(const std::vector<Found>& found);

    Workspace& workspace_;
    Background background_;
};

} // namespace workbench
