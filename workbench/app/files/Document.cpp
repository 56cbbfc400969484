#include "workbench/app/files/Document.h"

#include "workbench/app/files/ExportRun.h"
#include "workbench/app/session/Say.h"
#include "workbench/store/files/UnfinishedFile.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace workbench
{

namespace
{

namespace fs = std::filesystem;
using Severity = oribund::MessageSink::Severity;

constexpr const char* kTimeKey = "frame";
constexpr const char* kSelectionKey = "selection";
constexpr std::size_t kMostWarnings = 4;

int numberIn(const ViewState& view, const std::string& key)
{
    int number = 0;
    for (const auto& [name, value] : view)
        if (name == key)
            std::from_chars(value.data(), value.data() + value.size(), number);
    return number;
}

void sayWhatWasMended(const std::string& file, const std::vector<std::string>& warnings)
{
    if (warnings.empty())
        return;
    std::string text = quotedFile(file) + " was read with changes:";
    for (std::size_t i = 0; i < warnings.size() && i < kMostWarnings; ++i)
        text += "\n" + warnings[i];
    if (warnings.size() > kMostWarnings)
        text += "\nand " + std::to_string(warnings.size() - kMostWarnings) + " more.";
    warn(text);
}

void sayWhatIsMissing(const EditData& edit, const std::vector<ObjectId>& missing)
{
    const auto first = std::find_if(edit.media.begin(), edit.media.end(), [&missing](const MediaData& media) {
        return std::find(missing.begin(), missing.end(), media.id) != missing.end();
    });
    if (first == edit.media.end())
        return;
    std::string text = "The media file " + first->info.path + " is not there";
    if (missing.size() > 1)
        text += ", and " + std::to_string(missing.size() - 1) + " more are not";
    warn(text + ". Nothing of the edit is lost: choose File > Find missing media, and say where they are now.");
}

} // namespace

Document::Document(Workspace& workspace, const fs::path& recoveryFolder)
    : workspace_(workspace)
    , autosave_(recoveryFolder)
    , replacedCallback_(this, &Document::handleReplaced)
    , undoCallback_(this, &Document::handleUndo)
{
    replacedCallback_.attach(workspace_.replaced());
    handleReplaced({});
    QObject::connect(&autosaveTimer_, &QTimer::timeout, [this] { autosave(); });
    autosaveTimer_.start(1000);
}

Document::~Document() = default;

bool Document::isProjectName(const std::string& path)
{
    const std::string extension = fs::path(path).extension().string();
    return extension == kExtension || extension == ".xml";
}

std::string Document::name() const
{
    if (!path_.empty())
        return path_.stem().string();
    return copyName_.empty() ? "Untitled" : copyName_;
}

bool Document::isModified() const
{
    return recovered_ || !workspace_.edit().undoStack().isClean();
}

/** False when another window has that file; this one then has none. */
bool Document::setPath(const fs::path& path)
{
    const bool ours = autosave_.setProject(path);
    path_ = ours ? path : fs::path();
    copyName_.clear();
    onDisk_ = stampOf(path_);
    return ours;
}

void Document::startNew()
{
    setPath({});
    recovered_ = false;
    autosave_.clean();
    workspace_.show(oribund::Kt::makePtr<EditModel>(emptyEdit({}, FormatData()), workspace_.catalogue()));
}

/** Says why when it cannot be read. */
ProjectReading Document::read(const fs::path& file) const
{
    std::optional<ProjectReading> patient = reader_ ? reader_(file) : readProject(file, workspace_.catalogue());
    if (!patient) {
        say("Opening " + quotedFile(file.string()) + " was given up; nothing has changed.", Severity::Information);
        return {};
    }
    ProjectReading reading = std::move(*patient);
    if (!reading)
        say(quotedFile(file.string()) + " was not opened. " + reading.error, Severity::Error);
    return reading;
}

/** Shows what was read, as the project in that file, or in none. */
void Document::take(const ProjectReading& reading, const fs::path& project)
{
    workspace_.show(oribund::Kt::makePtr<EditModel>(*reading.edit, workspace_.catalogue()));
    restoreView(reading.view);
    if (!setPath(project)) {
        copyName_ = project.stem().string() + " (copy)";
        warn(quotedFile(project.string()) +
             " is open in another window. This is a copy of it: save it under another name.");
    }
    sayWhatIsMissing(*reading.edit, reading.missingMedia);
    said_.clear();
    for (const MediaData& media : reading.edit->media)
        if (std::ranges::count(reading.missingMedia, media.id) > 0)
            said_.push_back(media.info.path);
}

bool Document::open(const std::string& path)
{
    std::error_code error;
    const fs::path absolute = fs::absolute(path, error).lexically_normal();
    const fs::path file = error ? fs::path(path) : absolute;
    const ProjectReading reading = read(file);
    if (!reading)
        return false;
    recovered_ = false;
    autosave_.clean();
    // Saving must not write over a file of another program without asking.
    take(reading, reading.imported ? fs::path() : file);
    sayWhatWasMended(file.string(), reading.warnings);
    removeUnfinished(behindLinks(file).parent_path());
    changes_.notify({});
    return true;
}

bool Document::recover(const Recoverable& found)
{
    // What cannot be read stays where it is: another version may be able to.
    const ProjectReading reading = read(found.file);
    if (!reading)
        return false;
    if (autosave_.adopt(found).empty()) {
        warn("What was to be recovered is gone, or another window has taken it.");
        return false;
    }
    recovered_ = true;
    take(reading, found.project);
    sayWhatWasMended(found.file.string(), reading.warnings);
    std::error_code unknown;
    if (const auto saved = fs::last_write_time(path_, unknown); !unknown && saved >= found.time)
        onDisk_ = {}; // somebody went on with it after the crash; the clock of files is coarse
    changes_.notify({});
    return true;
}

bool Document::hasSaid(const std::string& problem) const
{
    return std::ranges::any_of(said_, [&](const std::string& path) { return problem.find(path) != std::string::npos; });
}

bool Document::isChangedOnDisk() const
{
    const FileStamp now = stampOf(path_);
    return now != FileStamp() && now != onDisk_;
}

bool Document::save(const std::string& path)
{
    std::error_code error;
    fs::path full = fs::absolute(path, error).lexically_normal();
    if (!isProjectName(full.string()))
        full += kExtension;
    const auto refuse = [&](const std::string& why) {
        autosave_.setProject(path_);
        say("The project was not saved. " + why + " Save it under another name or in another folder.", Severity::Error);
        return false;
    };
    const std::vector<std::string> used = filesUsedBy(workspace_.edit(), {});
    if (std::any_of(used.begin(), used.end(), [&](const std::string& file) { return isSameFile(full, file); }))
        return refuse("It is made of " + quotedFile(full.string()) + ".");
    if (!autosave_.setProject(full))
        return refuse(quotedFile(full.string()) + " is open in another window.");
    workspace_.edit().undoStack().endGesture();
    workspace_.edit().setName(full.stem().string());
    if (const std::string fault = saveProject(full, workspace_.edit(), viewState()); !fault.empty())
        return refuse(fault);
    setPath(full);
    recovered_ = false;
    autosave_.clean();
    workspace_.edit().undoStack().setClean();
    changes_.notify({});
    return true;
}

void Document::abandonChanges()
{
    recovered_ = false;
    autosave_.clean();
}

ViewState Document::viewState() const
{
    return {{kTimeKey, std::to_string(workspace_.vob().currentFrame())},
            {kSelectionKey, std::to_string(workspace_.selection().get())}};
}

void Document::restoreView(const ViewState& view)
{
    ModelVob& vob = workspace_.vob();
    vob.setCurrentTime(vob.timeOf(numberIn(view, kTimeKey)));
    const ObjectId selected = numberIn(view, kSelectionKey);
    if (workspace_.edit().timeline().findSegment(selected))
        workspace_.selection().set(selected);
}

void Document::autosave()
{
    const auto now = Autosave::Clock::now();
    if (isModified() && autosave_.due(now))
        autosave_.store(projectXml(workspace_.edit(), viewState(), {}));
    if (const std::string problem = autosave_.takeProblem(); !problem.empty())
        warn(problem);
}

int Document::handleReplaced(const EditReplaced&)
{
    undoCallback_.detach();
    undoCallback_.attach(workspace_.edit().undoStack().changes());
    changes_.notify({});
    return 0;
}

int Document::handleUndo(const UndoStackEvent&)
{
    if (isModified())
        autosave_.changed(Autosave::Clock::now());
    else
        autosave_.clean();
    changes_.notify({});
    return 0;
}

} // namespace workbench
