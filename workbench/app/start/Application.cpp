#include "workbench/app/start/Application.h"

#include "skin/QtConversions.h"
#include "skin/SkinApplication.h"
#include "workbench/app/effects/GenericEffectPanel.h"
#include "workbench/app/session/Background.h"
#include "workbench/app/session/PlainTexts.h"
#include "workbench/app/session/PreferenceKeys.h"
#include "workbench/app/session/Say.h"
#include "workbench/app/session/WorkbenchHost.h"
#include "workbench/app/session/Workspace.h"
#include "workbench/app/start/BatchJobs.h"
#include "workbench/app/start/PictureMaker.h"
#include "workbench/app/start/SampleMedia.h"
#include "workbench/app/window/KeyPolicy.h"
#include "workbench/app/window/MainWindow.h"
#include "workbench/store/files/FilePreferences.h"
#include "workbench/store/files/PathText.h"
#include "workbench/store/files/ScratchFolder.h"
#include "workbench/store/files/StandardFolders.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace workbench
{

using oribund::qt::SkinApplication;
using oribund::qt::toQt;

namespace
{

using Severity = oribund::MessageSink::Severity;

std::vector<std::string> filesAtStart(const CommandLine& commandLine, const std::filesystem::path& scratch)
{
    if (!commandLine.files.empty())
        return commandLine.files;
    if (const auto media = mediaIn(commandLine.mediaFolder); !media.empty())
        return {media.front()};
    if (commandLine.task == CommandLine::Task::Pictures)
        return {paintTestCard(scratch.string())};
    return {};
}

int makePictures(Workspace& workspace, MainWindow& window, const CommandLine& commandLine,
                 const std::vector<std::string>& files)
{
    PictureMaker maker(workspace, window);
    const std::string fault = maker.write(commandLine.picturesFolder, files);
    if (!fault.empty())
        std::fprintf(stderr, "%s\n", fault.c_str());
    return fault.empty() ? 0 : 1;
}

/** What the window shows at first: what is to be recovered, else what was asked for, else the last project. */
void openAtStart(MainWindow& window, const CommandLine& commandLine, const std::filesystem::path& recovery)
{
    if (window.files().offerRecovery(recovery)) {
        // Media would be added to what was recovered, and a project would take its place.
        for (const std::string& file : commandLine.files)
            warn(quotedFile(file) + " was not opened, because a project was recovered. Save that first.");
        return;
    }
    const std::string last = pathOfText(oribund::prefs().getPreference(PreferenceKeys::kLastProject, "").c_str());
    std::error_code error;
    if (!commandLine.files.empty())
        window.files().open(commandLine.files);
    else if (!last.empty() && std::filesystem::exists(last, error))
        window.files().open({last});
    else {
        if (!last.empty())
            warn("The project that was open last is not there any more: " + quotedFile(last) +
                 ". Open it from where it is now, or begin with a new one.");
        if (!commandLine.mediaFolder.empty())
            window.files().open(filesAtStart(commandLine, {}));
    }
}

/** What workers are not kept from on this system is said once, not at every start. */
void tellGaps(const std::vector<std::string>& gaps)
{
    std::string text;
    for (const std::string& gap : gaps)
        text += (text.empty() ? "" : " ") + gap;
    const oribund::String now(text.c_str());
    if (oribund::prefs().getPreference(PreferenceKeys::kToldGaps, "") == now)
        return;
    oribund::prefs().setPreference(PreferenceKeys::kToldGaps, now);
    if (!text.empty())
        warn("Effects and media are not fully fenced off on this system. " + text +
             " What a project may use is restricted all the same.");
}

/** The window is there before it is known what it can do. */
void learnInstalled(Workspace& workspace, Background& background)
{
    background.run([&workspace, engine = workspace.engine()]() -> Background::Completion {
        engine->installed();
        return [&workspace, gaps = engine->gaps()] {
            workspace.learnInstalled();
            tellGaps(gaps);
        };
    });
}

int runWindow(Workspace& workspace, WorkbenchHost& host, FilePreferences& preferences, const CommandLine& commandLine,
              const std::filesystem::path& recovery, const std::filesystem::path& scratch)
{
    Background background;
    Document document(workspace, recovery);
    MainWindow window(workspace, document);
    window.files().setMediaFolder(QString::fromStdString(commandLine.mediaFolder));
    host.setMessageDisplay(
        [&window](const oribund::WString& text, Severity severity) { window.showMessage(toQt(text), severity); });
    int status = 0;
    if (commandLine.task == CommandLine::Task::Pictures) {
        workspace.learnInstalled();
        status = makePictures(workspace, window, commandLine, filesAtStart(commandLine, scratch));
        document.abandonChanges();
    } else {
        window.restorePlace();
        window.show();
        workspace.whenInstalledIsKnown([&] { openAtStart(window, commandLine, recovery); });
        learnInstalled(workspace, background);
        if (const std::string problem = preferences.takeProblem(); !problem.empty())
            warn(problem);
        status = QApplication::exec();
    }
    host.setMessageDisplay({});
    return status;
}

int runBatch(const CommandLine& commandLine)
{
    FilePreferences preferences(settingsFolder() / "preferences.json");
    const WorkbenchHost host(preferences);
    Workspace workspace(std::make_shared<EngineHost>());
    workspace.learnInstalled();
    return commandLine.task == CommandLine::Task::Export ? exportFile(workspace, commandLine) : listEffects(workspace);
}

int runWithSettings(const CommandLine& commandLine)
{
    const bool pictures = commandLine.task == CommandLine::Task::Pictures;
    const ScratchFolder scratch;
    if (pictures && scratch.path().empty()) {
        std::fprintf(stderr, "There is no room for temporary files. Free some space, or set TMPDIR.\n");
        return 1;
    }
    // Pictures show nobody's own settings, and change none.
    FilePreferences preferences((pictures ? scratch.path() : settingsFolder()) / "preferences.json");
    WorkbenchHost host(preferences);
    registerGenericPanels();
    Workspace workspace(std::make_shared<EngineHost>());
    host.setPlayMachine(&workspace.vob());
    const int status = runWindow(workspace, host, preferences, commandLine,
                                 pictures ? scratch.path() / "recovery" : recoveryFolder(), scratch.path());
    host.setPlayMachine(nullptr);
    return status;
}

int runWithWindow(const CommandLine& commandLine, int& argc, char** argv)
{
    if (commandLine.task == CommandLine::Task::Pictures)
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (commandLine.scale > 0.0)
        qputenv("QT_SCALE_FACTOR", QByteArray::number(commandLine.scale));
    SkinApplication application(argc, argv);
    application.setApplicationName(QStringLiteral("Oribund workbench"));
    application.installEventFilter(new KeyPolicy(&application));
    application.installEventFilter(new PlainTexts(&application));
    const int status = runWithSettings(commandLine);
    // The application waits for the threads for ever; a disk that never answers must not keep it from ending.
    if (!Background::finishAll(3000)) {
        std::fflush(stdout);
        std::_Exit(status);
    }
    return status;
}

} // namespace

int runApplication(const CommandLine& commandLine, int& argc, char** argv)
{
    const bool needsWindow =
        commandLine.task == CommandLine::Task::Window || commandLine.task == CommandLine::Task::Pictures;
    return needsWindow ? runWithWindow(commandLine, argc, argv) : runBatch(commandLine);
}

} // namespace workbench
