#include "workbench/app/files/FileCommands.h"

#include "oribund/host/services/EditorPreferences.h"
#include "skin/QtConversions.h"
#include "workbench/app/files/ExportBar.h"
#include "workbench/app/files/ExportDialog.h"
#include "workbench/app/files/MediaImporter.h"
#include "workbench/app/session/PreferenceKeys.h"
#include "workbench/app/session/Say.h"
#include "workbench/model/projection/Projector.h"
#include "workbench/store/files/PathText.h"
#include "workbench/store/files/UnfinishedFile.h"

#include <QDateTime>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>
#include <chrono>
#include <utility>

namespace workbench
{

using oribund::qt::fromQt;
using oribund::qt::toQt;

namespace
{

constexpr const char* kMedia = "media";
constexpr const char* kProjects = "projects";
constexpr const char* kExports = "exports";

QString projectFilter()
{
    return QStringLiteral("Projects (*%1)").arg(QLatin1String(Document::kExtension));
}

QString timeText(std::filesystem::file_time_type time)
{
    const auto system = std::chrono::file_clock::to_sys(time);
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(system.time_since_epoch()).count();
    return QLocale().toString(QDateTime::fromSecsSinceEpoch(seconds), QLocale::ShortFormat);
}

} // namespace

FileCommands::FileCommands(Workspace& workspace, Document& document, MediaImporter& importer, ExportBar& exportBar,
                           QWidget& window)
    : workspace_(workspace)
    , document_(document)
    , importer_(importer)
    , exportBar_(exportBar)
    , window_(window)
    , finder_(workspace)
    , reader_(workspace, window)
{
    document_.setReader([this](const std::filesystem::path& file) { return reader_.read(file); });
}

FileCommands::~FileCommands()
{
    document_.setReader({});
}

QString FileCommands::folderFor(const char* what) const
{
    const oribund::String fallback = mediaFolder_.isEmpty() ? oribund::String(QDir::homePath().toStdString().c_str())
                                                            : oribund::String(mediaFolder_.toStdString().c_str());
    const QString remembered = toQt(oribund::prefs().getPreference(PreferenceKeys::folder(what), fallback));
    return QFileInfo(remembered).isDir() ? remembered : toQt(fallback);
}

void FileCommands::rememberFolder(const char* what, const QString& file) const
{
    oribund::prefs().setPreference(PreferenceKeys::folder(what), fromQt(QFileInfo(file).absolutePath()));
}

void FileCommands::startNew()
{
    if (!mayGiveUpChanges())
        return;
    awaitsPicture_ = false;
    document_.startNew();
}

void FileCommands::askAndOpen()
{
    const QStringList files =
        QFileDialog::getOpenFileNames(&window_, QStringLiteral("Open media or a project"), folderFor(kMedia),
                                      QStringLiteral("Media and projects (*);;") + projectFilter());
    if (files.isEmpty())
        return;
    rememberFolder(kMedia, files.front());
    std::vector<std::string> paths;
    for (const QString& file : files)
        paths.push_back(file.toStdString());
    open(paths);
}

void FileCommands::open(const std::vector<std::string>& paths)
{
    // A project is read with the effects that there are.
    if (!workspace_.knowsInstalled())
        return workspace_.whenInstalledIsKnown([this, paths] { open(paths); });
    std::vector<std::string> media;
    const auto project = std::find_if(paths.begin(), paths.end(), Document::isProjectName);
    std::copy_if(paths.begin(), paths.end(), std::back_inserter(media),
                 [](const std::string& path) { return !Document::isProjectName(path); });
    if (project != paths.end())
        openProject(*project);
    if (!media.empty())
        importer_.import(media);
}

void FileCommands::openProject(const std::string& path)
{
    if (!mayGiveUpChanges())
        return;
    // A project that brings the program down must not be opened again at every start.
    oribund::prefs().setPreference(PreferenceKeys::kLastProject, "");
    const bool opened = document_.open(path);
    awaitsPicture_ = opened && workspace_.edit().timeline().endFrame() > 0;
    if (!awaitsPicture_)
        rememberProject();
}

void FileCommands::pictureShown()
{
    if (std::exchange(awaitsPicture_, false))
        rememberProject();
}

void FileCommands::rememberProject() const
{
    oribund::prefs().setPreference(PreferenceKeys::kLastProject,
                                   oribund::String(textOfPath(document_.path().string()).c_str()));
}

void FileCommands::findMedia()
{
    if (finder_.missing().empty())
        return say("No media file is missing.", oribund::MessageSink::Severity::Information);
    findMediaExcept({});
}

void FileCommands::findMediaExcept(const std::set<ObjectId>& asked)
{
    std::vector<MediaData> missing = finder_.missing();
    std::erase_if(missing, [&asked](const MediaData& media) { return asked.contains(media.id); });
    if (missing.empty())
        return;
    const MediaData& media = missing.front();
    const QFileInfo file(QString::fromStdString(media.info.path));
    // In what is left of its folder, at first.
    QString folder = file.absolutePath();
    while (!QFileInfo(folder).isDir())
        folder = QFileInfo(folder).absolutePath();
    const QString found = QFileDialog::getOpenFileName(
        &window_, QStringLiteral("Where is %1 now?").arg(QString::fromStdString(quotedFile(media.info.path))),
        folder == QDir::rootPath() ? folderFor(kMedia) : folder, QStringLiteral("All files (*)"));
    if (found.isEmpty())
        return;
    std::set<ObjectId> next = asked;
    next.insert(media.id);
    finder_.relink(media, found.toStdString(), [this, next] { findMediaExcept(next); });
}

bool FileCommands::save()
{
    if (document_.path().empty())
        return saveAs();
    return document_.isChangedOnDisk() ? saveOverChangedFile() : document_.save(document_.path().string());
}

bool FileCommands::saveOverChangedFile()
{
    const std::string file = document_.path().string();
    QMessageBox box(
        QMessageBox::Warning, QStringLiteral("File changed"),
        QStringLiteral("Something else has changed %1 meanwhile.").arg(QString::fromStdString(quotedFile(file))),
        QMessageBox::NoButton, &window_);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(QStringLiteral("Replacing it loses what is in the file now."));
    const QAbstractButton* const replace = box.addButton(QStringLiteral("Replace"), QMessageBox::DestructiveRole);
    QPushButton* const other = box.addButton(QStringLiteral("Save as\u2026"), QMessageBox::AcceptRole);
    box.setEscapeButton(box.addButton(QMessageBox::Cancel));
    box.setDefaultButton(other);
    box.exec();
    if (box.clickedButton() == replace)
        return document_.save(file);
    return box.clickedButton() == other && saveAs();
}

bool FileCommands::saveAs()
{
    const QString suggested = document_.path().empty()
                                  ? folderFor(kProjects) + QLatin1Char('/') + QString::fromStdString(document_.name()) +
                                        QLatin1String(Document::kExtension)
                                  : QString::fromStdString(document_.path().string());
    QFileDialog dialog(&window_, QStringLiteral("Save the project as"), QFileInfo(suggested).absolutePath(),
                       projectFilter());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    // Before the dialog asks whether a file is to be replaced: its question is about the file that is written.
    dialog.setDefaultSuffix(QLatin1String(Document::kExtension + 1));
    dialog.selectFile(suggested);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    const QString file = dialog.selectedFiles().constFirst();
    if (!document_.save(file.toStdString()))
        return false;
    rememberFolder(kProjects, file);
    rememberProject();
    return true;
}

void FileCommands::askAndExport()
{
    if (exportBar_.isRunning())
        return say("An export is under way. Wait for it, or cancel it.");
    const int frames = workspace_.edit().timeline().endFrame();
    if (frames == 0)
        return say("There is nothing to export. Open media first.");
    const QString file = QString::fromStdString(document_.path().string());
    ExportDialog::Suggestion suggestion;
    suggestion.folder = file.isEmpty() ? folderFor(kExports) : QFileInfo(file).absolutePath();
    suggestion.name = QString::fromStdString(document_.name());
    suggestion.format = workspace_.edit().format();
    suggestion.frames = frames;
    suggestion.used = filesUsedBy(workspace_.edit(), document_.path());
    ExportDialog dialog(suggestion, workspace_.exportPresets(), &window_);
    if (dialog.exec() != QDialog::Accepted)
        return;
    ExportRequest request = dialog.request();
    if (!mayLeaveOut(request))
        return;
    if (exportBar_.start(workspace_.edit(), document_.path(), request))
        rememberFolder(kExports, QString::fromStdString(request.path));
}

/** What the picture goes without, a film may go without; but not without a word. */
bool FileCommands::mayLeaveOut(ExportRequest& request)
{
    for (const LeftOutEffect& effect : leftOut())
        request.without.push_back(effect.id);
    const std::string names = namesOf(request.without, project(workspace_.edit()));
    if (names.empty())
        return true;
    QMessageBox box(QMessageBox::Question, QStringLiteral("Effects that are left out"),
                    QStringLiteral("The picture goes without %1.").arg(QString::fromStdString(names)),
                    QMessageBox::NoButton, &window_);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(
        QStringLiteral("What crashed or did not answer in the picture may end the export half-way."));
    QPushButton* const without = box.addButton(QStringLiteral("Export without"), QMessageBox::AcceptRole);
    const QAbstractButton* const with = box.addButton(QStringLiteral("Try with"), QMessageBox::DestructiveRole);
    box.setEscapeButton(box.addButton(QMessageBox::Cancel));
    box.setDefaultButton(without);
    box.exec();
    if (box.clickedButton() == with)
        request.without.clear();
    return box.clickedButton() == with || box.clickedButton() == without;
}

bool FileCommands::mayEndExport()
{
    if (!exportBar_.isRunning())
        return true;
    QMessageBox box(QMessageBox::Question, QStringLiteral("Export under way"),
                    QStringLiteral("The export is not complete."), QMessageBox::NoButton, &window_);
    box.setInformativeText(QStringLiteral("The program can wait for it, and end then."));
    QPushButton* const wait = box.addButton(QStringLiteral("Wait, then quit"), QMessageBox::AcceptRole);
    const QAbstractButton* const cancel =
        box.addButton(QStringLiteral("Cancel the export and quit"), QMessageBox::DestructiveRole);
    box.setEscapeButton(box.addButton(QStringLiteral("Stay"), QMessageBox::RejectRole));
    box.setDefaultButton(wait);
    box.exec();
    if (box.clickedButton() == cancel) {
        exportBar_.cancel();
        return true;
    }
    if (box.clickedButton() != wait)
        return false;
    // It may have come to its end while the question was there.
    if (!exportBar_.isRunning())
        return true;
    exportBar_.setAfterwards(QStringLiteral("then quitting"), [this] { window_.close(); });
    return false;
}

bool FileCommands::mayGiveUpChanges()
{
    if (!document_.isModified())
        return true;
    QMessageBox box(QMessageBox::Question, QStringLiteral("Unsaved changes"),
                    QStringLiteral("Save the changes to %1?").arg(QString::fromStdString(quoted(document_.name()))),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, &window_);
    box.setDefaultButton(QMessageBox::Save);
    box.setInformativeText(QStringLiteral("Without saving they are lost."));
    switch (box.exec()) {
    case QMessageBox::Save:
        return save();
    case QMessageBox::Discard:
        return true;
    default:
        return false;
    }
}

bool FileCommands::offerRecovery(const std::filesystem::path& recoveryFolder)
{
    for (const char* what : {kProjects, kExports})
        removeUnfinished(folderFor(what).toStdString());
    const std::vector<Recoverable> found = Autosave::findRecoverable(recoveryFolder);
    if (found.empty())
        return false;
    const Recoverable& newest = found.front();
    const std::string name = newest.project.empty() ? "Untitled" : newest.project.stem().string();
    QMessageBox box(QMessageBox::Question, QStringLiteral("Recover a project"),
                    QStringLiteral("The program ended before %1 was saved.").arg(QString::fromStdString(quoted(name))),
                    QMessageBox::NoButton, &window_);
    box.setInformativeText(QStringLiteral("It can be recovered as it was at %1.").arg(timeText(newest.time)));
    const QAbstractButton* const recover = box.addButton(QStringLiteral("Recover"), QMessageBox::AcceptRole);
    const QAbstractButton* const discard = box.addButton(QStringLiteral("Discard"), QMessageBox::DestructiveRole);
    box.addButton(QStringLiteral("Ask again later"), QMessageBox::RejectRole);
    box.exec();
    if (box.clickedButton() == recover)
        return document_.recover(newest);
    if (box.clickedButton() == discard)
        Autosave::discard(newest);
    return false;
}

} // namespace workbench
