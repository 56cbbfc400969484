#pragma once

#include "workbench/app/session/Background.h"
#include "workbench/store/ProjectFile.h"

#include <filesystem>
#include <optional>

class QWidget;

namespace workbench
{

class Workspace;

/**
 * Reads projects on another thread, while the window goes on being drawn. After a moment a question says what is being
 * read, and offers to give it up. User-interface thread; what is referred to outlives the reader.
 */
class PatientReader
{
public:
    PatientReader(const Workspace& workspace, QWidget& window)
        : workspace_(workspace)
        , window_(window)
    {
    }

    /** Returns once it is read. Empty when the user has given it up, or while another is being read. */
    std::optional<ProjectReading> read(const std::filesystem::path& file);

private:
    const Workspace& workspace_;
    QWidget& window_;
    Background background_;
    bool isReading_ = false;
};

} // namespace workbench
