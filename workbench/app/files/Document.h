#pragma once

#include "oribund/host/notify/MethodCallback.h"
#include "workbench/app/session/Workspace.h"
#include "workbench/store/ProjectFile.h"
#include "workbench/store/files/Autosave.h"
#include "workbench/store/files/FileIdentity.h"

#include <QTimer>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace workbench
{

/** The project has another file or name, or is no longer, or again, what was saved. */
struct DocumentChanged {
};

/** The project as files: opening, saving, the copy that is kept against a crash. */
class Document
{
public:
    /** What project files are called. */
    static constexpr const char* kExtension = ".mlt";

    /** The workspace outlives the document. */
    Document(Workspace& workspace, const std::filesystem::path& recoveryFolder);
    ~Document();

    /** How project files are read: by default at once. Empty when the user has given it up. */
    using Reader = std::function<std::optional<ProjectReading>(const std::filesystem::path& file)>;

    void setReader(Reader reader) { reader_ = std::move(reader); } ///< empty for the default

    /** Whether the path is named as a project is. */
    static bool isProjectName(const std::string& path);

    /** The file; empty for a project that was never saved. */
    const std::filesystem::path& path() const { return path_; }

    /** For the title of the window. */
    std::string name() const;

    bool isModified() const;

    /** Each replaces the edit, whose changes are given up. Where one says why it cannot, and yields false, everything
        is as before, and the copy against a crash too. A project that is open in another window is opened as a copy,
        which has no file. */
    void startNew();
    bool open(const std::string& path);
    bool recover(const Recoverable& found);

    /** Whether the file holds something else than what was read or saved here last. */
    bool isChangedOnDisk() const;

    /** Says why and yields false when it cannot be written; everything is as before then. */
    bool save(const std::string& path);

    /** The program ends without the changes: the copy of them goes. */
    void abandonChanges();

    /** Whether it was said on opening that the file is missing that a problem names. */
    bool hasSaid(const std::string& problem) const;

    oribund::Notifier<DocumentChanged>& changes() { return changes_; }

private:
    int handleReplaced(const EditReplaced&);
    int handleUndo(const UndoStackEvent&);
    void autosave();
    ProjectReading read(const std::filesystem::path& file) const;
    void take(const ProjectReading& reading, const std::filesystem::path& project);
    ViewState viewState() const;
    void restoreView(const ViewState& view);
    bool setPath(const std::filesystem::path& path);

    Workspace& workspace_;
    Reader reader_;
    std::filesystem::path path_;
    std::string copyName_;          ///< of a project without a file that was opened as a copy
    FileStamp onDisk_;              ///< of the file, when it was read or saved last
    bool recovered_ = false;        ///< what is open is nowhere but in the recovery folder
    std::vector<std::string> said_; ///< media that were missing on opening
    Autosave autosave_;
    QTimer autosaveTimer_;
    oribund::Notifier<DocumentChanged> changes_;
    oribund::MethodCallback<Document, EditReplaced> replacedCallback_;
    oribund::MethodCallback<Document, UndoStackEvent> undoCallback_;
};

} // namespace workbench
