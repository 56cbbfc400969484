#pragma once

#include "workbench/app/files/Document.h"
#include "workbench/app/files/MediaFinder.h"
#include "workbench/app/files/PatientReader.h"
#include "workbench/engine/protocol/EngineTypes.h"

#include <QString>

#include <functional>
#include <set>
#include <string>
#include <vector>

class QWidget;

namespace workbench
{

class ExportBar;
struct ExportRequest;
class MediaImporter;

/** What the window does with files, and what it asks before. */
class FileCommands
{
public:
    /** What is referred to outlives the commands. */
    FileCommands(Workspace& workspace, Document& document, MediaImporter& importer, ExportBar& exportBar,
                 QWidget& window);
    ~FileCommands();

    FileCommands(const FileCommands&) = delete;
    FileCommands& operator=(const FileCommands&) = delete;

    void startNew();
    void askAndOpen();

    /** Opens the project among the paths, or adds them as media. */
    void open(const std::vector<std::string>& paths);

    /** The project that was opened has come to be seen: from now on it is the one to begin with. */
    void pictureShown();

    /** False when it was not saved. */
    bool save();
    bool saveAs();
    void askAndExport();

    /** What the picture goes without for now. */
    std::function<std::vector<LeftOutEffect>()> leftOut = [] { return std::vector<LeftOutEffect>(); };

    /** Asks, one after the other, where missing media are now. */
    void findMedia();

    /** Whether files are being read that were found. */
    bool isBusy() const { return finder_.isBusy(); }

    /** The project that the next run opens. */
    void rememberProject() const;

    /** Asks what to do with changes that are not saved; false when the user wants to go on with them. */
    bool mayGiveUpChanges();

    /** Asks what to do with an export that is under way; false when the window is to stay, for now or until it is done.
     */
    bool mayEndExport();

    /** Offers what a crashed session has left behind, and clears away what is of no use; true when the former is now
        open. */
    bool offerRecovery(const std::filesystem::path& recoveryFolder);

    /** Where files are looked for at first. */
    void setMediaFolder(const QString& folder) { mediaFolder_ = folder; }

private:
    QString folderFor(const char* what) const;
    void rememberFolder(const char* what, const QString& file) const;
    void openProject(const std::string& path);
    bool mayLeaveOut(ExportRequest& request);
    bool saveOverChangedFile();
    void findMediaExcept(const std::set<ObjectId>& asked);

    Workspace& workspace_;
    Document& document_;
    MediaImporter& importer_;
    ExportBar& exportBar_;
    QWidget& window_;
    QString mediaFolder_;
    MediaFinder finder_;
    PatientReader reader_;
    bool awaitsPicture_ = false;
};

} // namespace workbench
